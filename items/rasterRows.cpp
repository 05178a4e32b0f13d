// SPDX-License-Identifier: MIT
#include "items/rasterRows.h"

#include <QtEndian>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr quint32 kOpaque = 0xFF000000;

quint16 rgb565(unsigned r, unsigned g, unsigned b)
{
    return static_cast<quint16>((r >> 3) << 11 | (g >> 2) << 5 | b >> 3);
}

quint32 rgb32(quint32 r, quint32 g, quint32 b)
{
    return kOpaque | r << 16 | g << 8 | b;
}

quint16 gray16(const uchar *s)
{
    return rgb565(s[0], s[0], s[0]);
}

quint16 colour16(const uchar *s)
{
    return rgb565(s[0], s[1], s[2]);
}

quint16 lastThree16(const uchar *s)
{
    return rgb565(s[1], s[2], s[3]);
}

quint32 gray32(const uchar *s)
{
    return rgb32(s[0], s[0], s[0]);
}

quint32 colour32(const uchar *s)
{
    return rgb32(s[0], s[1], s[2]);
}

quint32 word32(const uchar *s)
{
    return qFromLittleEndian<quint32>(s);
}

template <class Pixel> Pixel *pixels(uchar *raster)
{
    return static_cast<Pixel *>(static_cast<void *>(raster));
}

/// The step from a pixel to the next one in a direction of the stored photo.
struct Steps
{
    qsizetype source; ///< in bytes
    qsizetype target; ///< in pixels of the raster
    int count;        ///< pixels in this direction
};

/// The place in the raster of a pixel of the stored photo.
qsizetype placeOf(QPoint pixel, QSize stored, lumi::Orientation orientation)
{
    const QPoint upright = orientation.upright(pixel, stored);
    const qsizetype height = orientation.turned(stored).height();
    return upright.x() * height + (height - 1 - upright.y());
}

/// A run is a sequence of pixels that are adjacent in the raster. The conversion is a template
/// argument, so that the inner loop has no branches. So is count for a whole block, so that its loop
/// has a fixed length.
template <auto convert, class Count, class Pixel>
void copyRuns(const uchar *source, Steps run, Count count, Steps next, Pixel *target)
{
    for (int k = 0; k < next.count; ++k) {
        for (int i = 0; i < count; ++i) {
            target[i] = convert(source + i * run.source);
        }
        source += next.source;
        target += next.target;
    }
}

template <int samples, auto convert>
void turn(const lumi::LineBlock &block, QSize stored, lumi::Orientation orientation, uchar *raster)
{
    using Pixel = decltype(convert(nullptr));
    qsizetype place = placeOf({0, block.first}, stored, orientation);
    Steps run
        = {block.stride, placeOf({0, block.first + 1}, stored, orientation) - place, block.count};
    Steps next = {samples, placeOf({1, block.first}, stored, orientation) - place, stored.width()};
    if (std::abs(run.target) != 1) {
        std::swap(run, next); // the photo lies on its side
    }
    const uchar *source = block.lines;
    if (run.target < 0) {
        // Begins at the other end of the run.
        source += (run.count - 1) * run.source;
        place -= run.count - 1;
        run.source = -run.source;
    }
    Pixel *target = pixels<Pixel>(raster) + place;
    if (run.count == lumi::kBlockLines) {
        copyRuns<convert>(source, run, std::integral_constant<int, lumi::kBlockLines>(), next,
                          target);
    } else {
        copyRuns<convert>(source, run, run.count, next, target);
    }
}

struct Turner
{
    int depth;
    int components;
    lumi::TurnBlock turn;
};

constexpr Turner kTurners[] = {
    {16, 1, turn<1, gray16>}, {16, 3, turn<3, colour16>}, {16, 4, turn<4, lastThree16>},
    {32, 1, turn<1, gray32>}, {32, 3, turn<3, colour32>}, {32, 4, turn<4, word32>},
};

} // namespace

lumi::TurnBlock lumi::turnerFor(int depth, int components)
{
    const auto *found
        = std::find_if(std::begin(kTurners), std::end(kTurners), [=](const Turner &t) {
              return t.depth == depth && t.components == components;
          });
    return found == std::end(kTurners) ? nullptr : found->turn;
}

void lumi::fillBlack(uchar *raster, qsizetype pixelCount, int depth)
{
    if (depth == 16) {
        std::fill_n(pixels<quint16>(raster), pixelCount, quint16(0));
    } else {
        std::fill_n(pixels<quint32>(raster), pixelCount, kOpaque);
    }
}
