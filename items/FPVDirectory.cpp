// SPDX-License-Identifier: MIT
#include "items/FPVDirectory.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

#include <dirent.h>

namespace {

QList<QRegularExpression> wildcards(const QString &nameFilter)
{
    QList<QRegularExpression> patterns;
    for (const QString &part : QDir::nameFiltersFromString(nameFilter)) {
        patterns.append(QRegularExpression(QRegularExpression::wildcardToRegularExpression(part),
                                           QRegularExpression::CaseInsensitiveOption));
    }
    return patterns;
}

bool passesKind(const QFileInfo &info, QDir::Filters filter)
{
    const bool isDangling = info.isSymLink() && !info.exists();
    const bool isSystem = isDangling || (!info.isDir() && !info.isFile());
    const bool systemWanted = filter.testFlag(QDir::System);
    if (isSystem && !systemWanted) {
        return false;
    }
    if (info.isSymLink() && filter.testFlag(QDir::NoSymLinks)) {
        return isDangling && systemWanted;
    }
    return (!info.isDir() || filter.testAnyFlags(QDir::Dirs | QDir::AllDirs))
        && (!info.isFile() || filter.testFlag(QDir::Files));
}

/// As in QDir, all three bits together restrict nothing, like none of them.
bool passesPermissions(const QFileInfo &info, QDir::Filters filter)
{
    return filter.testFlags(QDir::PermissionMask)
        || ((!filter.testFlag(QDir::Readable) || info.isReadable())
            && (!filter.testFlag(QDir::Writable) || info.isWritable())
            && (!filter.testFlag(QDir::Executable) || info.isExecutable()));
}

/// Whether QDir would list the entry with these bits.
bool passesFilter(const QFileInfo &info, QDir::Filters filter)
{
    return (filter.testFlag(QDir::Hidden) || !info.isHidden()) && passesKind(info, filter)
        && passesPermissions(info, filter);
}

bool matchesAny(const QList<QRegularExpression> &patterns, const QString &name)
{
    return std::any_of(patterns.begin(), patterns.end(), [&name](const QRegularExpression &p) {
        return p.match(name).hasMatch();
    });
}

bool isSelfOrParent(const QString &name)
{
    return name == QLatin1String(".") || name == QLatin1String("..");
}

} // namespace

FPVDirectory::FPVDirectory(const QString &path)
    : QDir(path)
{ }

bool FPVDirectory::hasEntries(const QString &nameFilter, int filterSpec) const
{
    const QByteArray encodedPath = QFile::encodeName(path());
    DIR *directory = ::opendir(encodedPath.constData());
    if (directory == nullptr) {
        qWarning("readDirEntries: Cannot read the directory: %s", encodedPath.constData());
        return false;
    }
    const QList<QRegularExpression> patterns = wildcards(nameFilter);
    const QDir::Filters filter(filterSpec);
    bool found = false;
    while (!found) {
        const dirent *entry = ::readdir(directory);
        if (entry == nullptr) {
            break;
        }
        const QString name = QFile::decodeName(entry->d_name);
        if (filter.testFlag(QDir::Hidden) && isSelfOrParent(name)) {
            continue;
        }
        found = matchesAny(patterns, name) && passesFilter(QFileInfo(filePath(name)), filter);
    }
    if (::closedir(directory) != 0) {
        qWarning("QDir::readDirEntries: Cannot close the directory: %s", encodedPath.constData());
    }
    return found;
}
