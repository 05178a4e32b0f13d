// SPDX-License-Identifier: MIT
// The kernel's figures of the running test program.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <malloc.h>
#include <unistd.h>

namespace lumi::test {

/// How many files this process has open.
[[nodiscard]] inline qsizetype openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size();
}

/// The position up to which this process has read the file; -1 if it isn't open.
[[nodiscard]] inline qint64 bytesRead(const QString &path)
{
    const QDir handles(QStringLiteral("/proc/self/fd"));
    const QString real = QFileInfo(path).canonicalFilePath();
    const QStringList names = handles.entryList(QDir::AllEntries | QDir::System);
    for (const QString &name : names) {
        if (QFile::symLinkTarget(handles.filePath(name)) != real) {
            continue;
        }
        QFile info(QString(QStringLiteral("/proc/self/fdinfo/") + name));
        // The first line is "pos:" and a number.
        return info.open(QIODevice::ReadOnly) ? info.readLine().mid(4).trimmed().toLongLong() : -1;
    }
    return -1;
}

/// Resident memory of this process, -1 if it isn't known.
[[nodiscard]] inline long residentKB()
{
    QFile pages(QStringLiteral("/proc/self/statm"));
    const bool isOpen = pages.open(QIODevice::ReadOnly);
    const QByteArrayList fields = isOpen ? pages.readAll().split(' ') : QByteArrayList();
    return fields.size() > 1 ? fields[1].toLong() * (::sysconf(_SC_PAGESIZE) >> 10) : -1;
}

/// False under the address sanitizer, which keeps freed memory, so that figures are useless.
[[nodiscard]] inline bool countsMemory()
{
    return ::mallinfo2().uordblks > 0;
}

} // namespace lumi::test
