// SPDX-License-Identifier: MIT
// The life of the process: what must be set before there is an application object, then photo
// store, swap store, main window, event loop, and the same backwards.
#pragma once

class QPEApplication;

namespace lumi {

/// Lets a failed write return an error where it would otherwise end the process: to a pipe that
/// nobody reads, such as that of a log, or beyond the limit on file sizes. Opens the standard
/// streams that are closed. Called before anything can log.
void prepareProcess();

/// Returns the exit status of the event loop. Nothing stops the start: a photo store that
/// can't be made is only logged.
[[nodiscard]] int runProgram(QPEApplication &application);

} // namespace lumi
