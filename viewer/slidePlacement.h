// SPDX-License-Identifier: MIT
// Where a picture of the slideshow lies on the screen: centred, as large as its proportions allow.
// The screen memory is turned like the decoded pictures (see FPVItemImage): its rows run along the
// screen's width, its columns along the height.
#pragma once

#include <QSize>

#include <vector>

namespace lumi {

/// The rows or columns that the scaled picture takes. May reach one past the end.
struct SlideSpan
{
    int first = 0;
    int length = 0;

    friend bool operator==(const SlideSpan &, const SlideSpan &) = default;
};

/// Scaled lengths are numerator / denominator times those of the picture.
struct SlidePlacement
{
    SlideSpan rows;
    SlideSpan columns;
    qint64 numerator = 1;
    qint64 denominator = 1;
};

/// Both sizes are upright. An empty size gives empty spans.
[[nodiscard]] SlidePlacement placeSlide(QSize picture, QSize screen);

/// For each of count rows (or columns) of the screen: the row of the picture, which has `length` of
/// them, or -1 for black.
[[nodiscard]] std::vector<int> slideSources(const SlidePlacement &placement, SlideSpan span,
                                            int length, int count);

} // namespace lumi
