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
    bool isDisturbed = false; ///< a call of its was
    QByteArray call;          ///< that call, with its path
    int result = -1;          ///< what the job gave, 0 to 255, unless it was killed
    int warnings = 0;
    QStringList notes;
    QByteArray crash; ///< how it ended if neither by itself nor as planned
};

/// What the job has to tell besides its result. Only in the child.
void note(const QString &text);

/// Whether the library is there: it comes by LD_PRELOAD.
[[nodiscard]] bool isLibraryLoaded();

/// The job's calls below the folders, at most two, are watched from its start to its end. What it
/// logs is counted and dropped. A child that takes longer than half a minute is ended, which
/// counts as a crash.
[[nodiscard]] Ending runInChild(faults::Plan plan, const QStringList &folders,
                                const std::function<int()> &job);

} // namespace lumi::test
