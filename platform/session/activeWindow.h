// SPDX-License-Identifier: MIT
#pragma once

namespace lumi {

/// Whether a window of another program is active, for a program whose own windows are not. It is
/// not if one of the own windows is minimised, or if X11 says that no window is active, as while a
/// menu of the window manager is open. Other window systems don't tell: then it is.
[[nodiscard]] bool isOtherProgramActive();

} // namespace lumi
