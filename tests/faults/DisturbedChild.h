// SPDX-License-Identifier: MIT
// Runs a job in a child of this process while the preloaded library disturbs it.
#pragma once

#include "tests/faults/preload/FaultPlan.h"

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace lumi::test {

/// How a job ended.
struct Ending
{
    bool isKilled = false;    ///< as planned
    bool isDisturbed = false; ///< whether a call was disturbed
    QByteArray call;          ///< the disturbed call, with its path
    int result = -1;          ///< the result of the job, 0 to 255, unless it was killed
    int warnings = 0;
    QStringList notes;
    QByteArray crash; ///< how the job ended, if it did not return and was not killed as planned
};

/// Adds a text to Ending::notes. Call it only in the child.
void note(const QString &text);

/// Whether the library is loaded; LD_PRELOAD does that.
[[nodiscard]] bool isLibraryLoaded();

/// Disturbs and counts the job's calls in the folders, at most two, and below them. Messages to the
/// log are counted and dropped. A child that takes longer than half a minute is killed, which
/// counts as a crash.
[[nodiscard]] Ending runInChild(faults::Plan plan, const QStringList &folders,
                                const std::function<int()> &job);

} // namespace lumi::test
