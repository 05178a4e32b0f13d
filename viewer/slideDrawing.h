// SPDX-License-Identifier: MIT
// Draws pictures and signs of the slideshow into plain memory. Pictures are scaled to the nearest
// pixel. A sign answers a key before the next picture is decoded.
// Format: the memory has a row for each pixel of the screen's width. A row has a pixel for each of
// the screen's height, from the bottom up.
#pragma once

#include <QSize>

namespace lumi {

enum class SlideSign : int { None = 0, Next = 1, Previous = 2 };

/// Screen memory, lent.
struct SlideTarget
{
    uchar *bits = nullptr;
    int lineStep = 0; ///< bytes from row to row
    int depth = 0;    ///< 16 (RGB565) or 32
    QSize screen;     ///< upright
};

/// A decoded picture of the target's depth, lent: width rows of height pixels.
struct SlideSource
{
    const uchar *bits = nullptr;
    QSize size;
};

/// Draws the sign, then the picture over the whole screen, black beside it. With a sign the picture
/// leaves out the end of some rows but covers the sign itself. Nothing happens for an empty picture
/// or another depth.
void drawSlide(const SlideTarget &target, const SlideSource &source, SlideSign sign);

/// Draws the sign alone: next at the right, previous at the left, both at the bottom.
void drawSlideSign(const SlideTarget &target, SlideSign sign);

} // namespace lumi
