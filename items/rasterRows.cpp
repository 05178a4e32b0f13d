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

// One type for each combination: its pixel, its samples a pixel and its conversion. Each makes
// a loop of its own, so that no test stands in the inner one.
struct Gray16
{
    using Pixel = quint16;
    static constexpr int kSamples = 1;

    static Pixel pixel(const uchar *s) { return rgb565(s[0], s[0], s[0]); }
};

struct Rgb16
{
    using Pixel = quint16;
    static constexpr int kSamples = 3;

    static Pixel pixel(const uchar *s) { return rgb565(s[0], s[1], s[2]); }
};

struct Four16
{
    using Pixel = quint16;
    static constexpr int kSamples = 4;

    static Pixel pixel(const uchar *s) { return rgb565(s[1], s[2], s[3]); }
};

struct Gray32
{
    using Pixel = quint32;
    static constexpr int kSamples = 1;

    static Pixel pixel(const uchar *s) { return rgb32(s[0], s[0], s[0]); }
};

struct Rgb32
{
    using Pixel = quint32;
    static constexpr int kSamples = 3;

    static Pixel pixel(const uchar *s) { return rgb32(s[0], s[1], s[2]); }
};

struct Four32
{
    using Pixel = quint32;
    static constexpr int kSamples = 4;

    static Pixel pixel(const uchar *s) { return qFromLittleEndian<quint32>(s); }
};

template <class Format> typename Format::Pixel *pixels(uchar *raster)
{
    return static_cast<typename Format::Pixel *>(static_cast<void *>(raster));
}

/// count is a template argument for a whole block, so that its loop has a fixed length.
template <class Format, class Count>
void turnLines(const lumi::LineBlock &block, Count count, int width, int height, uchar *raster)
{
    const uchar *last = block.lines + (count - 1) * block.stride;
    auto *target = pixels<Format>(raster) + (height - block.first - count);
    for (int x = 0; x < width; ++x) {
        for (int i = 0; i < count; ++i) {
            target[i] = Format::pixel(last - i * block.stride);
        }
        last += Format::kSamples;
        target += height;
    }
}

template <class Format>
void turn(const lumi::LineBlock &block, int width, int height, uchar *raster)
{
    if (block.count == lumi::kBlockLines) {
        turnLines<Format>(block, std::integral_constant<int, lumi::kBlockLines>(), width, height,
                          raster);
    } else {
        turnLines<Format>(block, block.count, width, height, raster);
    }
}

struct Turner
{
    int depth;
    int components;
    lumi::TurnBlock turn;
};

constexpr Turner kTurners[] = {
    {16, 1, turn<Gray16>}, {16, 3, turn<Rgb16>}, {16, 4, turn<Four16>},
    {32, 1, turn<Gray32>}, {32, 3, turn<Rgb32>}, {32, 4, turn<Four32>},
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
        std::fill_n(pixels<Gray16>(raster), pixelCount, quint16(0));
    } else {
        std::fill_n(pixels<Gray32>(raster), pixelCount, kOpaque);
    }
}
