// SPDX-License-Identifier: MIT
// Draws a turned raster at some percent into memory that is turned alike: a line of the memory
// is a column of the screen, a row of the raster is a column of the photo, and both count from
// the bottom up. Each pixel is the raster's nearest, with a gray margin round a picture that
// is smaller than its place.
// This is the whole cost of a zoom or a move of the pen, so nothing is computed per pixel: the
// places in a raster row are the same for all lines and are found once, and lines that show the
// same row are copies of one.
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
    const uchar *raster; ///< size.width() rows of size.height() pixels
    QSize size;          ///< not turned
    QPoint origin;       ///< the photo pixel at the top left of a picture larger than its place
    int percent;
    int depth; ///< of raster and target: 16 or 32
};

struct ZoomTarget
{
    uchar *bits;
    int lineStep;   ///< bytes
    QRect area;     ///< the place of the picture: x counts pixels of a line, y lines
    QRegion region; ///< the only pixels to be written
};

/// The origin that is drawn when another one is wanted: never past the raster, and 0 along an
/// axis on which all of the picture is on show. area: of the target.
[[nodiscard]] QPoint zoomOrigin(const ZoomSource &source, const QRect &area);

/// Draws nothing without pixels to take or to write, or without memory for a line.
void paintZoomed(const ZoomSource &source, const ZoomTarget &target);

} // namespace lumi
