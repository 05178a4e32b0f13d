// SPDX-License-Identifier: MIT
// Start and end of the process: process settings, lock, photo store, swap store, main window, event
// loop, and their end in reverse order.
#pragma once

class QPEApplication;

namespace lumi {

/// Ignores the signals of failed writes (to a closed pipe, or beyond the limit on file sizes), so
/// that the write returns an error instead of ending the process. Opens standard streams that are
/// closed. Must be called before anything is logged.
void prepareProcess();

/// Returns the exit status of the event loop. If the program already runs for this home, brings its
/// window to the front and returns 0. The program also starts if the photo store can't be made;
/// that is only logged.
[[nodiscard]] int runProgram(QPEApplication &application);

} // namespace lumi
