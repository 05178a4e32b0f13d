// SPDX-License-Identifier: MIT
// For tests that name things by today's date.
#pragma once

#include <QTest>
#include <QTime>

namespace lumi::test {

/// Waits for the next day if this one is nearly over, so that a test that begins now has the
/// same date from beginning to end.
inline void waitForOneDay()
{
    constexpr int kMsToMidnight = 11000;
    if (QTime::currentTime() > QTime(23, 59, 50)) {
        QTest::qSleep(kMsToMidnight);
    }
}

} // namespace lumi::test
