// SPDX-License-Identifier: MIT
#include "tools/photos/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace lumi::photos {

bool fileExists(const QString &path)
{
    return QFile::exists(path);
}

bool makeFolder(const QString &path)
{
    if (QDir().mkpath(path)) {
        return true;
    }
    std::fprintf(stderr, "lumivault-photos: cannot make the folder %s\n", qPrintable(path));
    return false;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    if (!makeFolder(QFileInfo(path).path())) {
        return false;
    }
    // A sample that was interrupted must not look like one that is there. Nothing is synced:
    // samples can be made again.
    QFile::remove(path);
    QFile file(path + QStringLiteral(".part"));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    file.close();
    if (written && file.error() == QFileDevice::NoError && file.rename(path)) {
        return true;
    }
    std::fprintf(stderr, "lumivault-photos: cannot write %s: %s\n", qPrintable(path),
                 qPrintable(file.errorString()));
    return false;
}

} // namespace lumi::photos
