// SPDX-License-Identifier: MIT
#include "files/slideshowOptions.h"

#include <algorithm>

namespace {

constexpr int kLastDelayRow = 8;
constexpr int kFirstDelaySeconds = 2;
constexpr int kMsPerSecond = 1000;
constexpr int kForeverRow = 10;

} // namespace

lumi::SlideshowOptions lumi::slideshowOptions(const SlideshowRows &rows)
{
    const int time = std::clamp(rows.dispTime, 0, kLastDelayRow);
    const int count = std::clamp(rows.dispCount, 0, kForeverRow);
    return {rows.operation == 0, rows.dispOrder == 0, (time + kFirstDelaySeconds) * kMsPerSecond,
            count == kForeverRow ? 0 : count + 1};
}
