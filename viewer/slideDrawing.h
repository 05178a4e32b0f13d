// SPDX-License-Identifier: MIT
// The drawing of the slideshow into plain memory: pictures scaled to the nearest pixel, and the
// signs that answer a key before the next picture is there. Knows no widget and no screen.
// Format: the screen memory has a row for each pixel of the screen's width, and in a row one
// pixel for each of its height, from the bottom up.
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

/// Draws the sign, then the picture over the whole screen, which is black beside it. With a
/// sign the picture spares the end of some rows; the sign itself it covers. Nothing happens for
/// an empty picture or another depth.
void drawSlide(const SlideTarget &target, const SlideSource &source, SlideSign sign);

/// Draws the sign alone: next at the right, previous at the left, both at the bottom.
void drawSlideSign(const SlideTarget &target, SlideSign sign);

} // namespace lumi
