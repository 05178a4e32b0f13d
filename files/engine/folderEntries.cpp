// SPDX-License-Identifier: MIT
#include "files/engine/folderEntries.h"

#include "app/common/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

bool leadsOut(const QString &name)
{
    return name.contains(QLatin1Char('/'));
}

QString inside(const QString &folder, const QString &name)
{
    return folder + QLatin1Char('/') + name;
}

/// The toolkit's renaming would copy and delete where the system refuses to rename: a photo cut
/// short, or gone, for a name.
bool renameFile(const QString &from, const QString &to)
{
    const QByteArray oldName = QFile::encodeName(from);
    const QByteArray newName = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, oldName.constData(), AT_FDCWD, newName.constData(), RENAME_NOREPLACE)
        == 0) {
        return true;
    }
    // Not every file system can refuse to replace a file.
    const bool isUnknown = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
    return isUnknown && !lumi::isTaken(to)
        && std::rename(oldName.constData(), newName.constData()) == 0;
}

} // namespace

bool lumi::areOneFile(const QString &path, const QString &other)
{
    struct stat one = {};
    struct stat two = {};
    return ::stat(QFile::encodeName(path).constData(), &one) == 0
        && ::stat(QFile::encodeName(other).constData(), &two) == 0 && one.st_dev == two.st_dev
        && one.st_ino == two.st_ino;
}

bool lumi::hasEntry(const QString &folder, const QString &name)
{
    return !leadsOut(name) && isTaken(inside(folder, name));
}

bool lumi::makeFolder(const QString &folder, const QString &name)
{
    return !leadsOut(name) && QDir().mkdir(inside(folder, name));
}

bool lumi::renameEntry(const QString &folder, const QString &oldName, const QString &newName)
{
    return !leadsOut(newName) && !hasEntry(folder, newName)
        && renameFile(inside(folder, oldName), inside(folder, newName));
}

bool lumi::removePhoto(const QString &path)
{
    const auto anyWriter = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return (QFile::permissions(path) & anyWriter) && removePath(path, false);
}

void lumi::removeEmptyFolders(const QString &folder)
{
    const QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoSymLinks | QDir::Readable
                                                     | QDir::Executable | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        // That it fails for a folder with contents is what chooses the empty ones.
        QDir().rmdir(inside(folder, name));
    }
}
