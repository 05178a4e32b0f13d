// SPDX-License-Identifier: MIT
// How large a photo is shown, in whole percent: the steps of the zoom buttons, the percent that
// fits a photo to the screen, and what a percent of the photo is for the pixels at hand. Plain
// values in and out.
#pragma once

#include <QSize>

#include <optional>

namespace lumi {

inline constexpr int kLeastZoom = 10;
inline constexpr int kGreatestZoom = 1000;
/// Every pixel once.
inline constexpr int kFullSize = 100;

/// The first step above a percent, which need not be one itself; the greatest at the end.
[[nodiscard]] int zoomStepAbove(int percent);
/// The last step below a percent; the least at the end.
[[nodiscard]] int zoomStepBelow(int percent);

/// The percent at which all of the photo is in the viewport, from the least to the greatest
/// zoom; nothing if one of the two has no pixels.
[[nodiscard]] std::optional<int> fitPercent(QSize viewport, QSize photo);

/// The size that percents are of: the photo's, or half of it on both sides for a photo that is
/// too large to be decoded whole. Half, also where the decoder has to halve it twice.
[[nodiscard]] QSize zoomBase(QSize photo);

/// The percent to draw a raster at so that the photo appears at percent; 1 or more.
[[nodiscard]] int effectivePercent(int percent, QSize photo, QSize raster);

} // namespace lumi
