// SPDX-License-Identifier: MIT
// One process-wide fact: the main window has accepted its closing, and the program is on its
// way out. Set once by the main window; only tests ever clear it.
#pragma once

namespace lumi {

[[nodiscard]] bool shutDownFlag();
void setShutDownFlag(bool shuttingDown);

} // namespace lumi
