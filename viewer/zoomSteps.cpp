// SPDX-License-Identifier: MIT
#include "viewer/zoomSteps.h"

#include "items/photoScale.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

constexpr int kSteps[] = {
    lumi::kLeastZoom, 30, 50, lumi::kFullSize, 150, 200, 300, 400, 600, 800, lumi::kGreatestZoom,
};
constexpr int kWhole = 100;

} // namespace

int lumi::zoomStepAbove(int percent)
{
    const int *step = std::upper_bound(std::begin(kSteps), std::end(kSteps), percent);
    return step != std::end(kSteps) ? *step : kGreatestZoom;
}

int lumi::zoomStepBelow(int percent)
{
    const int *step = std::lower_bound(std::begin(kSteps), std::end(kSteps), percent);
    return step != std::begin(kSteps) ? *std::prev(step) : kLeastZoom;
}

std::optional<int> lumi::fitPercent(QSize viewport, QSize photo)
{
    if (viewport.isEmpty() || photo.isEmpty()) {
        return std::nullopt;
    }
    const qint64 across = qint64(viewport.width()) * kWhole / photo.width();
    const qint64 down = qint64(viewport.height()) * kWhole / photo.height();
    return static_cast<int>(std::clamp<qint64>(std::min(across, down), kLeastZoom, kGreatestZoom));
}

QSize lumi::zoomBase(QSize photo)
{
    const bool isHalved = qint64(photo.width()) * photo.height() >= kScreenPixelLimit;
    return isHalved ? QSize(photo.width() / 2, photo.height() / 2) : photo;
}

int lumi::effectivePercent(int percent, QSize photo, QSize raster)
{
    if (photo.isEmpty() || raster.isEmpty() || photo.width() == raster.width()) {
        return std::max(1, percent);
    }
    const qint64 scaled = qint64(percent) * photo.width() / raster.width();
    return static_cast<int>(std::clamp<qint64>(scaled, 1, std::numeric_limits<int>::max()));
}
