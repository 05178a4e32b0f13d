// SPDX-License-Identifier: MIT
// Copies the decoder's lines into the turned raster: pixel (x, y) of the upright photo goes to
// x * height + (height - 1 - y). Pixels that follow each other in the raster are a part of a stored
// column or, if the photo lies on its side, of a stored line. The pixels of a line lie far apart in
// the first case, so a block of lines is turned at once, which fills a cache line at each place.
// Format: 16 bits are RGB565, 32 bits are 0xFFRRGGBB in host order. Of four samples, 16 bits use
// the last three as red, green and blue, and 32 bits use all four as one little-endian word.
#pragma once

#include "items/Orientation.h"

#include <QtGlobal>

namespace lumi {

/// A block has at most this many lines. A slice is a whole number of blocks.
inline constexpr int kBlockLines = 16;

/// Consecutive decoded lines of a photo.
struct LineBlock
{
    const uchar *lines;
    qsizetype stride; ///< bytes from line to line
    int first;        ///< photo row of the first line
    int count;        ///< 1 to kBlockLines
};

/// Puts the block into the raster of a photo of this stored size.
using TurnBlock
    = void (*)(const LineBlock &block, QSize stored, Orientation orientation, uchar *raster);

/// The function for 16 or 32 bits and 1, 3 or 4 samples a pixel. Null for anything else.
[[nodiscard]] TurnBlock turnerFor(int depth, int components);

/// Fills pixelCount pixels with black.
void fillBlack(uchar *raster, qsizetype pixelCount, int depth);

} // namespace lumi
