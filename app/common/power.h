// SPDX-License-Identifier: MIT
// Screen saver and battery.
#pragma once

/// Tells the system that a long run starts (mode 0) or has ended (any other mode).
void setScreenSaver(int mode);

/// True on external power, or with more than this percentage left in the battery.
[[nodiscard]] bool batteryEnough(int percent);
