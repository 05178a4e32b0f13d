// SPDX-License-Identifier: MIT
// How large a photo is shown, in whole percent: the steps of the zoom buttons, the percent that
// fits a photo to the screen, and the conversion for a photo that was decoded at another scale.
#pragma once

#include <QSize>

#include <optional>

namespace lumi {

inline constexpr int kLeastZoom = 10;
inline constexpr int kGreatestZoom = 1000;
/// One screen pixel for each pixel of the photo.
inline constexpr int kFullSize = 100;

/// The first step above any percent, at most the greatest.
[[nodiscard]] int zoomStepAbove(int percent);
/// The last step below any percent, at least the least.
[[nodiscard]] int zoomStepBelow(int percent);

/// The percent at which the whole photo fits into the viewport, from the least to the greatest
/// zoom. Null if one of the two is empty.
[[nodiscard]] std::optional<int> fitPercent(QSize viewport, QSize photo);

/// The size of 100 percent: the photo's, or half of its sides for a photo that is too large to be
/// decoded whole. Half also if the decoder halves it twice.
[[nodiscard]] QSize zoomBase(QSize photo);

/// The percent of the raster at which the photo appears at `percent`; at least 1.
[[nodiscard]] int effectivePercent(int percent, QSize photo, QSize raster);

} // namespace lumi
