// SPDX-License-Identifier: MIT
#include "items/rasterRows.h"

#include <QtEndian>

#include <algorithm>

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

/// Samples and conversion are template arguments, so that the inner loop has no branches. So is
/// count for a whole block, so that its loop has a fixed length.
template <int samples, auto convert, class Count>
void turnLines(const lumi::LineBlock &block, Count count, int width, int height, uchar *raster)
{
    using Pixel = decltype(convert(nullptr));
    const uchar *last = block.lines + (count - 1) * block.stride;
    auto *target = pixels<Pixel>(raster) + (height - block.first - count);
    for (int x = 0; x < width; ++x) {
        for (int i = 0; i < count; ++i) {
            target[i] = convert(last - i * block.stride);
        }
        last += samples;
        target += height;
    }
}

template <int samples, auto convert>
void turn(const lumi::LineBlock &block, int width, int height, uchar *raster)
{
    if (block.count == lumi::kBlockLines) {
        turnLines<samples, convert>(block, std::integral_constant<int, lumi::kBlockLines>(), width,
                                    height, raster);
    } else {
        turnLines<samples, convert>(block, block.count, width, height, raster);
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
