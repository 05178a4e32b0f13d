// SPDX-License-Identifier: MIT
// Sets times of files and folders, for tests in which two files must have different times.
#pragma once

#include <QFile>
#include <QString>
#include <QTest>

#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>

namespace lumi::test {

/// Makes a file or folder last changed at that second of the clock.
inline void setChangedAt(const QString &path, std::time_t second, long nanoseconds = 0)
{
    const timespec times[] = {{0, UTIME_OMIT}, {second, nanoseconds}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
}

} // namespace lumi::test
