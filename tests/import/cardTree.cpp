// SPDX-License-Identifier: MIT
#include "tests/import/cardTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

using lumi::test::Tree;

namespace {

void mustWork(bool ok, const QString &what)
{
    if (!ok) {
        qFatal("cannot make %s", qPrintable(what));
    }
}

QByteArray contentOf(const fs::path &path)
{
    if (::access(path.c_str(), R_OK) != 0) {
        return "may not be read";
    }
    // By a descriptor, because the name may not be valid text.
    QFile file;
    mustWork(file.open(::open(path.c_str(), O_RDONLY), QIODevice::ReadOnly, QFile::AutoCloseHandle),
             QString::fromStdString(path.string()));
    return file.readAll();
}

QByteArray describe(const fs::directory_entry &entry)
{
    if (entry.is_symlink()) {
        return "link" + QByteArray::fromStdString(fs::read_symlink(entry.path()).string());
    }
    if (entry.is_directory()) {
        return "folder";
    }
    return entry.is_regular_file() ? "file" + contentOf(entry.path()) : QByteArray("other");
}

template <typename Describe> Tree walk(const QString &folder, Describe describeEntry)
{
    Tree tree;
    const fs::path root(folder.toStdString());
    if (!fs::exists(root)) {
        return tree;
    }
    constexpr auto kLockedOnesToo = fs::directory_options::skip_permission_denied;
    for (const fs::directory_entry &entry :
         fs::recursive_directory_iterator(root, kLockedOnesToo)) {
        const std::string name = fs::relative(entry.path().parent_path(), root).string();
        const std::string file = entry.path().filename().string();
        const std::string full = name == "." ? file : (fs::path(name) / file).string();
        const QByteArray text = describeEntry(entry);
        if (!text.isNull()) {
            tree.insert(QString::fromStdString(full), text);
        }
    }
    return tree;
}

/// Sizes around the block size of 16384 bytes, small ones, and 0.
constexpr int kSizes[] = {0, 1, 700, 16383, 16384, 16385, 5000, 40000, 32768, 3};

QString cameraName(int i)
{
    constexpr const char *kPatterns[]
        = {"IMG_%04d.JPG",   "IMG_%04d.jpeg",       "MVI_%04d.MOV",     "MVI_%04d.THM",
           "IMG_%04d.xmp",   "photo %04d 50%%.jpg", ".hidden_%04d.jpg", "no_extension_%04d",
           "a.b.c_%04d.JPG", "<b>%04d & co.jpg",    "Größe é %04d.jpg", "写真_%04d.JPG"};
    const char *pattern = kPatterns[static_cast<std::size_t>(i) % std::size(kPatterns)];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    return QString::asprintf(pattern, i);
#pragma GCC diagnostic pop
}

} // namespace

Tree lumi::test::treeOf(const QString &folder)
{
    return walk(folder, describe);
}

Tree lumi::test::stateOf(const QString &folder)
{
    return walk(folder, [](const fs::directory_entry &entry) -> QByteArray {
        struct stat status = {};
        lstat(entry.path().c_str(), &status);
        return describe(entry) + ' ' + QByteArray::number(qlonglong(status.st_size)) + ' '
            + QByteArray::number(status.st_mode) + ' '
            + QByteArray::number(qlonglong(status.st_mtim.tv_sec)) + '.'
            + QByteArray::number(qlonglong(status.st_mtim.tv_nsec)) + ' '
            + QByteArray::number(qlonglong(status.st_ino));
    });
}

Tree lumi::test::importableTree(const QString &folder)
{
    return walk(folder, [](const fs::directory_entry &entry) -> QByteArray {
        std::error_code error;
        if (!entry.is_symlink()) {
            const QByteArray text = describe(entry);
            return text == "other" ? QByteArray() : text;
        }
        const bool isFile = fs::is_regular_file(fs::status(entry.path(), error));
        return isFile ? QByteArray("file" + contentOf(entry.path())) : QByteArray();
    });
}

void lumi::test::writeBytes(const QString &path, qsizetype size)
{
    mustWork(QDir().mkpath(QFileInfo(path).path()), path);
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = static_cast<quint32>(qHash(QFileInfo(path).fileName(), 7)) | 1U;
    for (char &byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24);
    }
    QFile file(path);
    mustWork(file.open(QIODevice::WriteOnly) && file.write(bytes) == size, path);
}

void lumi::test::openToAll(const QString &folder)
{
    for (QString path = folder; path != QDir::tempPath() && path != QLatin1String("/");
         path = QFileInfo(path).path()) {
        mustWork(QFile::setPermissions(path, QFile::Permissions(0x7777)), path);
    }
}

int lumi::test::fillCard(const QString &folder, int count)
{
    const QString folders[] = {QStringLiteral("DCIM/100CAMRA"),
                               QStringLiteral("DCIM/101CAMRA"),
                               QStringLiteral("PRIVATE/M4ROOT/CLIP"),
                               QStringLiteral(".Trash/old"),
                               QString::fromUtf8("Überlingen am See/写真 2026"),
                               QString()};
    for (int i = 0; i < count; ++i) {
        const QString &sub = folders[static_cast<std::size_t>(i) % std::size(folders)];
        const int size = kSizes[static_cast<std::size_t>(i / 3) % std::size(kSizes)];
        writeBytes(folder + QLatin1Char('/') + sub + QLatin1Char('/') + cameraName(i), size);
    }
    for (const char *empty : {"DCIM/102EMPTY", "MISC", ".hidden empty/inner"}) {
        mustWork(QDir().mkpath(folder + QLatin1Char('/') + QLatin1String(empty)),
                 QLatin1String(empty));
    }
    const auto at = [&folder](const char *name) {
        return QFile::encodeName(folder + QLatin1String(name));
    };
    mustWork(mkfifo(at("/pipe.jpg").constData(), S_IRUSR | S_IWUSR) == 0, folder);
    mustWork(symlink("nowhere.jpg", at("/DCIM/dangling.jpg").constData()) == 0, folder);
    mustWork(symlink(".hidden_0006.jpg", at("/DCIM/100CAMRA/link.jpg").constData()) == 0, folder);
    mustWork(symlink("100CAMRA", at("/DCIM/linked folder").constData()) == 0, folder);
    return count + 1;
}

int lumi::test::openFile(const QString &end)
{
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    const QStringList names = descriptors.entryList(QDir::Files | QDir::System);
    for (const QString &name : names) {
        if (QFile::symLinkTarget(descriptors.filePath(name)).endsWith(end)) {
            return name.toInt();
        }
    }
    return -1;
}
