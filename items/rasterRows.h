// SPDX-License-Identifier: MIT
// From the decoder's lines to the turned raster: photo column x of photo row r goes to
// x * height + (height - 1 - r). A single line would touch one pixel in each of width far
// apart places; turning a block of lines at once fills a cache line at each of them.
// Format: 16 bits are RGB565, 32 bits 0xFFRRGGBB in host order. Of four samples, 16 bits take
// the last three as red, green and blue, and 32 bits take all four as one little-endian word.
#pragma once

#include <QtGlobal>

namespace lumi {

/// Most lines of a block. A slice is a whole number of blocks.
inline constexpr int kBlockLines = 16;

/// Decoded lines of a photo, one behind the other.
struct LineBlock
{
    const uchar *lines;
    qsizetype stride; ///< bytes from line to line
    int first;        ///< photo row of the first line
    int count;        ///< 1 to kBlockLines
};

/// Puts the block into the raster of a photo of width x height pixels.
using TurnBlock = void (*)(const LineBlock &block, int width, int height, uchar *raster);

/// The loop for 16 or 32 bits and 1, 3 or 4 samples a pixel; null for anything else.
[[nodiscard]] TurnBlock turnerFor(int depth, int components);

/// Fills pixelCount pixels with black.
void fillBlack(uchar *raster, qsizetype pixelCount, int depth);

} // namespace lumi
