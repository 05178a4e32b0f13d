// SPDX-License-Identifier: MIT
#pragma once

namespace lumi {

/// Whether a window of another program is active. Call it while no own window is active. False if
/// an own window is minimised. On X11 also false if no window is active, for example while a menu of
/// the window manager is open. Other window systems don't tell, so the result is true there.
[[nodiscard]] bool isOtherProgramActive();

} // namespace lumi
