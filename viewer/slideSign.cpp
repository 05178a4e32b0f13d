// SPDX-License-Identifier: MIT
#include "viewer/slideSign.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kLast = lumi::kSlideSignSide - 1;
/// Of the frame: distance from the edge and width.
constexpr int kFrameInset = 1;
constexpr int kFrameWidth = 2;
/// Columns of the arrow's tip and base. It grows by this many half pixels per column.
constexpr int kArrowTip = 9;
constexpr int kArrowBase = 28;
constexpr int kArrowGrowth = 2;
/// Twice the distance of the edge of base and bars from the middle.
constexpr int kReach = (kArrowBase - kArrowTip) * kArrowGrowth;

struct Bar
{
    int first;
    int last;
};

constexpr Bar kBars[] = {{33, 39}, {43, 46}, {49, 50}};

/// x counts from the left of the sign, y from its bottom.
constexpr bool isFrame(int x, int y)
{
    const int distance = std::min({x, y, kLast - x, kLast - y});
    return distance >= kFrameInset && distance < kFrameInset + kFrameWidth;
}

constexpr bool isArrow(int x, int y)
{
    const int twiceOff = 2 * y > kLast ? 2 * y - kLast : kLast - 2 * y;
    return x >= kArrowTip && x <= kArrowBase && twiceOff <= (x - kArrowTip) * kArrowGrowth + 1;
}

constexpr bool isBar(int x, int y)
{
    const int twiceOff = 2 * y > kLast ? 2 * y - kLast : kLast - 2 * y;
    return twiceOff <= kReach + 1
        && std::any_of(std::begin(kBars), std::end(kBars), [x](const Bar &bar) {
               return x >= bar.first && x <= bar.last;
           });
}

constexpr lumi::SlideSignPixels makeSign()
{
    lumi::SlideSignPixels pixels{};
    for (int x = 0; x <= kLast; ++x) {
        for (int y = 0; y <= kLast; ++y) {
            const bool isInk = isFrame(x, y) || isArrow(x, y) || isBar(x, y);
            const int place = x * lumi::kSlideSignSide + y;
            pixels[static_cast<std::size_t>(place)]
                = isInk ? lumi::kSlideSignInk : lumi::kSlideSignGround;
        }
    }
    return pixels;
}

constexpr lumi::SlideSignPixels kSign = makeSign();

} // namespace

const lumi::SlideSignPixels &lumi::slideSignPixels()
{
    return kSign;
}
