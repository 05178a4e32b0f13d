// SPDX-License-Identifier: MIT
// Focus frames of the picture buttons: nested yellow rectangles, one pixel wide.
#pragma once

class MyImageButton;

namespace lumi {

/// The frame of the small buttons.
void paintThreeRectangles(MyImageButton *button);
/// The frame of the big buttons.
void paintFiveRectangles(MyImageButton *button);

} // namespace lumi
