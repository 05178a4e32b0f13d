// SPDX-License-Identifier: MIT
// Draws a turned raster at some percent into memory that is turned alike: a line of the memory is a
// column of the screen, a row of the raster is a column of the photo, and both count from the
// bottom up. Each pixel is the nearest one of the raster. A picture smaller than its place gets a
// gray margin.
// This runs for each zoom and each move of the pen, so nothing is computed per pixel: the places
// within a raster row are computed once for all lines, and lines that show the same row are copied.
#pragma once

#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QSize>

namespace lumi {

/// The margin, in the pixels of each depth.
inline constexpr quint16 kMargin16 = 0x8410;
inline constexpr quint32 kMargin32 = 0xFF808080U;

struct ZoomSource
{
    const uchar *raster = nullptr; ///< size.width() rows of size.height() pixels
    QSize size;                    ///< not turned
    QPoint origin; ///< the photo pixel at the top left, if the picture exceeds its place
    int percent = 0;
    int depth = 0; ///< of raster and target: 16 or 32
};

struct ZoomTarget
{
    uchar *bits = nullptr;
    int lineStep = 0; ///< bytes
    QRect area;       ///< place of the picture: x counts pixels of a line, y counts lines
    QRegion region;   ///< only these pixels are written
};

/// The nearest origin that can be drawn: never past the raster, and 0 along an axis on which the
/// whole picture is visible. area: of the target.
[[nodiscard]] QPoint zoomOrigin(const ZoomSource &source, const QRect &area);

/// Draws nothing if source or target is empty, or without memory for a line.
void paintZoomed(const ZoomSource &source, const ZoomTarget &target);

} // namespace lumi
