// SPDX-License-Identifier: MIT
// Syncs files to the disk without blocking the event loop. The system calls for that can't be
// interrupted and may take minutes on a slow card, so a child process makes them.
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

/// Waits until everything on the file system of folder is on its disk, by running the program
/// "sync" of the search path. Events run. When stopped, it returns at once and kills the child. A
/// child that hangs in the system may live on after the call.
[[nodiscard]] SyncResult waitForDisk(const QString &folder, const GoOn &goOn);

} // namespace lumi
