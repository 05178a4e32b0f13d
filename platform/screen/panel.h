// SPDX-License-Identifier: MIT
// The handheld's screen, the least size of what a finger taps on it, and the program's colours.
#pragma once

#include <QRgb>
#include <QSize>

namespace lumi {

/// Of windows, and of the screen if the session has none.
inline constexpr QSize kPanelSize(640, 480);

/// Least side in pixels of a button or an entry.
inline constexpr int kFingerSize = 40;

/// What is chosen or under the cursor, and a cell that is not.
inline constexpr QRgb kChosenColor = 0xFFE8945A;
inline constexpr QRgb kCellColor = 0xFFACACAC;

} // namespace lumi
