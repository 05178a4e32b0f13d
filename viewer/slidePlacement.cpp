// SPDX-License-Identifier: MIT
#include "viewer/slidePlacement.h"

#include <algorithm>

namespace {

constexpr int kFractionBits = 16;

qint64 ratio(int screen, int picture)
{
    return (static_cast<qint64>(screen) << kFractionBits) / picture;
}

lumi::SlideSpan centred(int picture, int screen, qint64 numerator, qint64 denominator)
{
    const auto length = static_cast<int>(picture * numerator / denominator);
    // A picture with an odd side lies one pixel further on. The handheld places it like that.
    return {(screen >> 1) - (length >> 1) + (picture & 1), length};
}

} // namespace

lumi::SlidePlacement lumi::placeSlide(QSize picture, QSize screen)
{
    SlidePlacement placement;
    if (picture.isEmpty() || screen.isEmpty()) {
        return placement;
    }
    const bool fillsWidth
        = ratio(screen.width(), picture.width()) <= ratio(screen.height(), picture.height());
    placement.numerator = fillsWidth ? screen.width() : screen.height();
    placement.denominator = fillsWidth ? picture.width() : picture.height();
    placement.rows
        = centred(picture.width(), screen.width(), placement.numerator, placement.denominator);
    placement.columns
        = centred(picture.height(), screen.height(), placement.numerator, placement.denominator);
    return placement;
}

std::vector<int> lumi::slideSources(const SlidePlacement &placement, SlideSpan span, int length,
                                    int count)
{
    std::vector<int> sources(static_cast<std::size_t>(std::max(0, count)), -1);
    const int begin = std::clamp(span.first, 0, std::max(0, count));
    const int end = std::clamp(span.first + span.length, begin, std::max(0, count));
    for (int i = begin; i < end; ++i) {
        const qint64 source = (i - span.first) * placement.denominator / placement.numerator;
        sources[static_cast<std::size_t>(i)]
            = static_cast<int>(std::min<qint64>(source, length - 1));
    }
    return sources;
}
