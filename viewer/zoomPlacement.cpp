// SPDX-License-Identifier: MIT
#include "viewer/zoomPlacement.h"

#include <algorithm>

lumi::ZoomPlacement lumi::zoomPlacement(int length, int percent, int origin, int room)
{
    constexpr long long kWhole = 100;
    const long long scaled = std::max(1LL, percent * static_cast<long long>(length) / kWhole);
    if (scaled <= room) {
        const int shown = static_cast<int>(scaled);
        return {0, (room - shown) / 2, shown};
    }
    const int last = length - 1 - zoomedPixel(0, room - 1, percent);
    return {std::clamp(origin, 0, last), 0, room};
}
