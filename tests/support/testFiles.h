// SPDX-License-Identifier: MIT
// Small files that tests make and read.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace lumi::test {

/// Writes a file with all its parents; false if that fails.
inline bool writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
        && file.write(text) == text.size();
}

/// The whole file, null if it can't be opened.
inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace lumi::test
