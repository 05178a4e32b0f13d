// SPDX-License-Identifier: MIT
#include "app/common/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int kLastTry = 65535;

bool removeFolder(const QString &path)
{
    QDir folder(path);
    if (!folder.isReadable()) {
        return false;
    }
    const auto filter = QDir::Dirs | QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot;
    const QFileInfoList entries = folder.entryInfoList(filter);
    for (const QFileInfo &entry : entries) {
        const QString entryPath = entry.absoluteFilePath();
        if (entry.isDir() && !entry.isSymLink()) {
            removeFolder(entryPath);
        } else if (QFile::exists(entryPath)) {
            QFile::remove(entryPath);
        }
    }
    return folder.rmdir(folder.absolutePath());
}

QString numbered(const char *format, int number)
{
    // The two formats in use are constants of the callers, with one int conversion each.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    return QString::asprintf(format, number);
#pragma GCC diagnostic pop
}

} // namespace

QString lumi::documentsPath()
{
    return QDir::homePath() + QLatin1String("/Documents");
}

bool lumi::isProtected(const QString &path)
{
    const auto anyWriter = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return !(QFile::permissions(path) & anyWriter);
}

bool removePath(const QString &path, bool recursive)
{
    const QFileInfo info(path);
    if (info.isFile()) {
        return QFile::remove(path);
    }
    if (!info.isDir() || !recursive) {
        return false;
    }
    // The target of a link must not be emptied.
    return info.isSymLink() ? QFile::remove(path) : removeFolder(path);
}

QString uniquePath(const QString &path, const char *format, QChar separator)
{
    if (!QFile::exists(path)) {
        return path;
    }
    qsizetype cut = separator.isNull() ? -1 : path.lastIndexOf(separator);
    if (cut < 0) {
        cut = path.size();
    }
    const QString stem = path.left(cut);
    const QString tail = path.mid(cut);
    QString candidate;
    for (int n = 1; n <= kLastTry; ++n) {
        candidate = stem + numbered(format, n) + tail;
        if (!QFile::exists(candidate)) {
            break;
        }
    }
    return candidate;
}
