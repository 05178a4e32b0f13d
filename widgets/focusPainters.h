// SPDX-License-Identifier: MIT
// Focus frames of the picture buttons: nested yellow rectangles, one pixel wide.
#pragma once

class MyImageButton;

#include <QRgb>

namespace lumi {

inline constexpr QRgb kFocusColor = 0xFFFFFF00; ///< of all focus frames
/// The colour of the line inside each frame. Yellow alone is hard to see on a light picture.
inline constexpr QRgb kFocusShade = 0xFF202020;

/// The frame of the small buttons.
void paintThreeRectangles(MyImageButton *button);
/// The frame of the big buttons.
void paintFiveRectangles(MyImageButton *button);

} // namespace lumi
