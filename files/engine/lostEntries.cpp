// SPDX-License-Identifier: MIT
#include "files/engine/lostEntries.h"

#include <QFile>
#include <QString>

#include <cerrno>
#include <cstring>
#include <memory>

#include <dirent.h>

namespace {

struct CloseFolder
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

bool isText(const char *name)
{
    return QFile::encodeName(QFile::decodeName(name)) == name;
}

void warnOfError(const char *folder)
{
    qWarning("%s can't be read to its end, what it holds may be left out: %s", folder,
             std::strerror(errno));
}

} // namespace

void lumi::warnOfLostEntries(const QString &folder)
{
    const QByteArray path = QFile::encodeName(folder);
    const std::unique_ptr<DIR, CloseFolder> entries(::opendir(path.constData()));
    if (!entries) {
        warnOfError(path.constData());
        return;
    }
    int nameless = 0;
    errno = 0;
    while (const dirent *entry = ::readdir(entries.get())) {
        nameless += isText(entry->d_name) ? 0 : 1;
        errno = 0; // only the last call's counts
    }
    if (errno != 0) {
        warnOfError(path.constData());
    }
    if (nameless > 0) {
        qWarning("%s: names that can't be read, left out: %d", path.constData(), nameless);
    }
}
