// SPDX-License-Identifier: MIT
// The size of the handheld's screen, the least size of a touch target, and the program's colours.
#pragma once

#include <QRgb>
#include <QSize>

namespace lumi {

/// The size of windows, and of the screen if the session has none.
inline constexpr QSize kPanelSize(640, 480);

/// The smallest side of a button or an entry, in pixels.
inline constexpr int kFingerSize = 40;

/// The colour of what is chosen or at the cursor, and of any other cell.
inline constexpr QRgb kChosenColor = 0xFFE8945A;
inline constexpr QRgb kCellColor = 0xFFACACAC;
/// The colour of the keyboard focus on light widgets.
inline constexpr QRgb kFocusRing = 0xFF6B2A06;

} // namespace lumi
