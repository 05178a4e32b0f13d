// SPDX-License-Identifier: MIT
// For tests with names that contain today's date.
#pragma once

#include <QTest>
#include <QTime>

namespace lumi::test {

/// If the day is nearly over, waits for the next one, so that the date does not change during a
/// test.
inline void waitForOneDay()
{
    constexpr int kMsToMidnight = 11000;
    if (QTime::currentTime() > QTime(23, 59, 50)) {
        QTest::qSleep(kMsToMidnight);
    }
}

} // namespace lumi::test
