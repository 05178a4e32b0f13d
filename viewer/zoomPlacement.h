// SPDX-License-Identifier: MIT
// Where a picture drawn at some percent lies in a viewport, along one axis. A smaller picture is
// centred. A larger one fills the viewport with a part of it.
#pragma once

namespace lumi {

struct ZoomPlacement
{
    int origin = 0; ///< the first visible raster pixel
    int margin = 0; ///< viewport pixels before the picture
    int shown = 0;  ///< viewport pixels of the picture; each has its pixel in the raster

    friend bool operator==(const ZoomPlacement &, const ZoomPlacement &) = default;
};

/// The raster pixel at `index` of the viewport pixels that show a picture.
[[nodiscard]] constexpr int zoomedPixel(int origin, int index, int percent)
{
    constexpr long long kWhole = 100;
    return origin + static_cast<int>(index * kWhole / percent);
}

/// length: raster pixels along the axis; origin: the wanted first one; room: viewport pixels.
/// All but origin must be above 0. A picture is at least one pixel large at any percent. It can be
/// moved until its last pixel is visible.
[[nodiscard]] ZoomPlacement zoomPlacement(int length, int percent, int origin, int room);

} // namespace lumi
