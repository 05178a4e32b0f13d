// SPDX-License-Identifier: MIT
#include "viewer/slideDrawing.h"

#include "viewer/slidePlacement.h"
#include "viewer/slideSign.h"

#include <algorithm>
#include <cstddef>
#include <vector>

using lumi::SlideSign;
using lumi::SlideTarget;

namespace {

constexpr int kNarrowDepth = 16;
constexpr int kWideDepth = 32;
constexpr quint32 kOpaque = 0xFF000000;

template <class Pixel> struct Format;

template <> struct Format<quint16>
{
    static constexpr quint16 kBlack = 0;

    static quint16 fromRgb565(quint16 pixel) { return pixel; }
};

template <> struct Format<quint32>
{
    static constexpr quint32 kBlack = kOpaque;

    /// The channels are stretched so that full intensity stays full.
    static quint32 fromRgb565(quint16 pixel)
    {
        const quint32 r = pixel >> 11;
        const quint32 g = (pixel >> 5) & 0x3FU;
        const quint32 b = pixel & 0x1FU;
        return kOpaque | (r << 3 | r >> 2) << 16 | (g << 2 | g >> 4) << 8 | (b << 3 | b >> 2);
    }
};

template <class Pixel> Pixel *rowOf(const SlideTarget &target, int row)
{
    uchar *bits = target.bits + static_cast<std::ptrdiff_t>(row) * target.lineStep;
    return static_cast<Pixel *>(static_cast<void *>(bits));
}

template <class Pixel> void drawSign(const SlideTarget &target, SlideSign sign)
{
    if (sign == SlideSign::None) {
        return;
    }
    const bool isNext = sign == SlideSign::Next;
    const int firstRow = isNext ? target.screen.width() - lumi::kSlideSignSide : 0;
    const int columns = std::min(lumi::kSlideSignSide, target.screen.height());
    const lumi::SlideSignPixels &pixels = lumi::slideSignPixels();
    for (int i = 0; i < lumi::kSlideSignSide; ++i) {
        const int row = firstRow + i;
        if (row < 0 || row >= target.screen.width()) {
            continue;
        }
        Pixel *line = rowOf<Pixel>(target, row);
        for (int column = 0; column < columns; ++column) {
            const int place = i * lumi::kSlideSignSide + column;
            const auto index = static_cast<std::size_t>(place);
            line[column] = Format<Pixel>::fromRgb565(isNext ? pixels[pixels.size() - 1 - index]
                                                            : pixels[index]);
        }
    }
}

/// How many pixels of a row the picture may write. The pixels left out are not those of the sign:
/// they are counted from the other end of the row.
int writtenColumns(int row, SlideSign sign, QSize screen)
{
    const bool isBesideNext
        = sign == SlideSign::Next && row > screen.width() - lumi::kSlideSignSide;
    const bool isBesidePrevious = sign == SlideSign::Previous && row < lumi::kSlideSignSide;
    const int spared = isBesideNext || isBesidePrevious ? lumi::kSlideSignSide : 0;
    return std::max(0, screen.height() - spared);
}

template <class Pixel>
void copyRow(const Pixel *source, const std::vector<int> &sources, int count, Pixel *line)
{
    for (int column = 0; column < count; ++column) {
        const int from = sources[static_cast<std::size_t>(column)];
        line[column] = from < 0 ? Format<Pixel>::kBlack : source[from];
    }
}

template <class Pixel>
void draw(const SlideTarget &target, const lumi::SlideSource &source, SlideSign sign)
{
    drawSign<Pixel>(target, sign);
    const QSize screen = target.screen;
    const QSize size = source.size;
    const lumi::SlidePlacement placement = lumi::placeSlide(size, screen);
    const std::vector<int> rows
        = lumi::slideSources(placement, placement.rows, size.width(), screen.width());
    const std::vector<int> columns
        = lumi::slideSources(placement, placement.columns, size.height(), screen.height());
    const auto *pixels = static_cast<const Pixel *>(static_cast<const void *>(source.bits));
    for (int row = 0; row < screen.width(); ++row) {
        Pixel *line = rowOf<Pixel>(target, row);
        const int from = rows[static_cast<std::size_t>(row)];
        if (from < 0) {
            std::fill_n(line, screen.height(), Format<Pixel>::kBlack);
        } else {
            copyRow(pixels + static_cast<std::ptrdiff_t>(from) * size.height(), columns,
                    writtenColumns(row, sign, screen), line);
        }
    }
}

} // namespace

void lumi::drawSlide(const SlideTarget &target, const SlideSource &source, SlideSign sign)
{
    if (source.size.isEmpty() || target.screen.isEmpty()) {
        return;
    }
    if (target.depth == kNarrowDepth) {
        draw<quint16>(target, source, sign);
    } else if (target.depth == kWideDepth) {
        draw<quint32>(target, source, sign);
    }
}

void lumi::drawSlideSign(const SlideTarget &target, SlideSign sign)
{
    if (target.depth == kNarrowDepth) {
        drawSign<quint16>(target, sign);
    } else if (target.depth == kWideDepth) {
        drawSign<quint32>(target, sign);
    }
}
