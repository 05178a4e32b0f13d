// SPDX-License-Identifier: MIT
#include "platform/files/fileCalls.h"

#include <QFile>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 kMaxSmallFile = qint64{1024} * 1024;

} // namespace

void lumi::Descriptor::reset(int fd)
{
    const int old = std::exchange(m_fd, fd);
    if (old >= 0) {
        ::close(old);
    }
}

lumi::Descriptor lumi::openRegular(const QString &path)
{
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    Descriptor file(::open(QFile::encodeName(path).constData(), kFlags));
    struct stat figures = {};
    if (file.isOpen() && (::fstat(file.get(), &figures) != 0 || !S_ISREG(figures.st_mode))) {
        file = Descriptor();
        errno = EINVAL;
    }
    return file;
}

std::optional<QByteArray> lumi::readSmallFile(const QString &path)
{
    const Descriptor descriptor = openRegular(path);
    QFile file;
    if (!descriptor.isOpen() || !file.open(descriptor.get(), QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray content = file.read(kMaxSmallFile + 1);
    if (content.size() > kMaxSmallFile || file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }
    return content;
}

bool lumi::isRegular(const QString &path)
{
    struct stat figures = {};
    return ::lstat(QFile::encodeName(path).constData(), &figures) == 0 && S_ISREG(figures.st_mode);
}

bool lumi::isTaken(const QString &path)
{
    struct stat figures = {};
    return ::lstat(QFile::encodeName(path).constData(), &figures) == 0;
}

int lumi::renameNoReplace(const QString &from, const QString &to)
{
    const QByteArray oldName = QFile::encodeName(from);
    const QByteArray newName = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, oldName.constData(), AT_FDCWD, newName.constData(), RENAME_NOREPLACE)
        == 0) {
        return 0;
    }
    if (errno == EEXIST || isTaken(to)) {
        return EEXIST;
    }
    return std::rename(oldName.constData(), newName.constData()) == 0 ? 0 : errno;
}

int lumi::syncFile(int fd)
{
    int error = 0;
    do {
        error = ::fsync(fd) == 0 ? 0 : errno;
    } while (error == EINTR);
    return error == EINVAL ? 0 : error;
}

int lumi::syncFolder(const QString &folder)
{
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    const Descriptor open(::open(QFile::encodeName(folder).constData(), kFlags));
    return open.isOpen() ? syncFile(open.get()) : errno;
}
