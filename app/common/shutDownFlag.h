// SPDX-License-Identifier: MIT
// Process-wide flag: the main window was closed and the program is about to end. The main window
// sets it; only tests clear it.
#pragma once

namespace lumi {

[[nodiscard]] bool shutDownFlag();
void setShutDownFlag(bool shuttingDown);

} // namespace lumi
