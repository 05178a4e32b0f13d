// SPDX-License-Identifier: MIT
// The life of the process once there is an application object: photo store, swap store, main
// window, event loop, and the same backwards.
#pragma once

class QPEApplication;

namespace lumi {

/// Returns the exit status of the event loop. Nothing stops the start: a photo store that
/// can't be made is only logged.
[[nodiscard]] int runProgram(QPEApplication &application);

} // namespace lumi
