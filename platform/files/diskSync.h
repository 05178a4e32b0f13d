// SPDX-License-Identifier: MIT
// Gets files onto the disk without holding the event loop. The system's calls for that can't be
// interrupted and may take minutes on a slow card, so that a child process waits instead.
#pragma once

#include <functional>

class QString;

namespace lumi {

/// Asked from time to time; false ends the work early.
using GoOn = std::function<bool()>;

/// Starts writing a file to the disk, piece by piece, with events in between. It waits only
/// while the disk's queue is full. Does nothing where the system can't do it.
void startWriteBack(const QString &path, const GoOn &goOn);

enum class SyncResult {
    OnDisk,
    Stopped, ///< by goOn or by the end of the program
    Failed
};

/// Waits until everything on the file system of folder is on its disk. The program "sync" of the
/// search path does it. Events run. When stopped, it returns at once: the child is killed, but a
/// child that hangs in the system may outlive the call.
[[nodiscard]] SyncResult waitForDisk(const QString &folder, const GoOn &goOn);

} // namespace lumi
