// SPDX-License-Identifier: MIT
#include "files/engine/folderEntries.h"

#include "app/common/paths.h"
#include "platform/files/fileCalls.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace {

bool leadsOut(const QString &name)
{
    return name.contains(QLatin1Char('/'));
}

/// A name with a leading dot would not be listed.
bool isAllowed(const QString &name)
{
    return !leadsOut(name) && !name.startsWith(QLatin1Char('.'));
}

QString inside(const QString &folder, const QString &name)
{
    return folder + QLatin1Char('/') + name;
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
    return isAllowed(name) && QDir().mkdir(inside(folder, name));
}

bool lumi::renameEntry(const QString &folder, const QString &oldName, const QString &newName)
{
    return isAllowed(newName) && !hasEntry(folder, newName)
        && renameNoReplace(inside(folder, oldName), inside(folder, newName)) == 0;
}

bool lumi::removePhoto(const QString &path)
{
    return !isProtected(path) && removePath(path, false);
}

void lumi::removeEmptyFolders(const QString &folder)
{
    const QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoSymLinks | QDir::Readable
                                                     | QDir::Executable | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        // Fails for a folder that is not empty.
        QDir().rmdir(inside(folder, name));
    }
}
