// SPDX-License-Identifier: MIT
// The sign of a step in the slideshow: an arrow to the left with bars behind it, in a frame.
// Format: RGB565 in the order of the screen memory: rows from the left to the right, the pixels of
// a row from the bottom up. Read backwards the arrow points to the right.
#pragma once

#include <QtGlobal>

#include <array>

namespace lumi {

inline constexpr int kSlideSignSide = 60;
inline constexpr quint16 kSlideSignGround = 0xCEFF;
inline constexpr quint16 kSlideSignInk = 0x2B37;

using SlideSignPixels
    = std::array<quint16, static_cast<std::size_t>(kSlideSignSide) * kSlideSignSide>;

[[nodiscard]] const SlideSignPixels &slideSignPixels();

} // namespace lumi
