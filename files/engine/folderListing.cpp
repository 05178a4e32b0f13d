// SPDX-License-Identifier: MIT
#include "files/engine/folderListing.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::FolderEntry;

namespace {

constexpr unsigned char kLastAscii = 127;

struct CloseFolder
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

bool isDots(std::string_view name)
{
    return name == "." || name == "..";
}

bool isText(const QByteArray &name)
{
    return QFile::encodeName(QFile::decodeName(name)) == name;
}

QString shownName(const QByteArray &name)
{
    QString shown;
    for (const char byte : name) {
        const auto value = static_cast<unsigned char>(byte);
        shown += value <= kLastAscii ? QString(QLatin1Char(byte))
                                     : QString::asprintf("%%%02X", value);
    }
    return shown;
}

void sortByName(QList<QByteArray> *names)
{
    std::vector<std::pair<QString, QByteArray>> rows;
    rows.reserve(static_cast<std::size_t>(names->size()));
    for (const QByteArray &name : std::as_const(*names)) {
        rows.emplace_back(QFile::decodeName(name).toLower(), name);
    }
    std::sort(rows.begin(), rows.end());
    std::transform(rows.begin(), rows.end(), names->begin(), [](const auto &row) {
        return row.second;
    });
}

FolderEntry::Kind kindOf(mode_t mode)
{
    if (S_ISREG(mode)) {
        return FolderEntry::File;
    }
    return S_ISDIR(mode) ? FolderEntry::Folder : FolderEntry::Other;
}

bool leadsNowhere(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ELOOP;
}

void ask(const QByteArray &path, FolderEntry *entry)
{
    struct stat figures = {};
    if (::lstat(path.constData(), &figures) != 0) {
        return;
    }
    entry->isLink = S_ISLNK(figures.st_mode);
    if (entry->isLink && ::stat(path.constData(), &figures) != 0) {
        entry->kind = leadsNowhere(errno) ? FolderEntry::Other : FolderEntry::Unknown;
        return;
    }
    entry->kind = kindOf(figures.st_mode);
    entry->size = figures.st_size;
    entry->isReadable = ::access(path.constData(), R_OK) == 0;
}

} // namespace

lumi::FolderNames lumi::namesIn(const QString &folder)
{
    FolderNames listing{{}, false};
    const std::unique_ptr<DIR, CloseFolder> entries(
        ::opendir(QFile::encodeName(folder).constData()));
    if (!entries) {
        return listing;
    }
    errno = 0;
    while (const dirent *entry = ::readdir(entries.get())) {
        if (!isDots(entry->d_name)) {
            listing.names.append(entry->d_name);
        }
        errno = 0; // only the error of the last call counts
    }
    listing.isWhole = errno == 0;
    sortByName(&listing.names);
    return listing;
}

FolderEntry lumi::entryOf(const QString &folder, const QByteArray &name)
{
    FolderEntry entry;
    entry.isText = isText(name);
    entry.name = entry.isText ? QFile::decodeName(name) : shownName(name);
    entry.path = folder + QLatin1Char('/') + entry.name;
    ask(QFile::encodeName(folder) + '/' + name, &entry);
    return entry;
}

bool lumi::leadsInto(const QString &folder, const QString &path)
{
    const QString inside = QFileInfo(folder).canonicalFilePath() + QLatin1Char('/');
    return QFileInfo(path).canonicalFilePath().startsWith(inside);
}
