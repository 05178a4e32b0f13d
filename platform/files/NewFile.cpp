// SPDX-License-Identifier: MIT
#include "platform/files/NewFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t kMode = 0666; // less the user's mask

QString folderOf(const QString &path)
{
    return QFileInfo(path).path();
}

} // namespace

lumi::NewFile::NewFile(const QString &path)
    : m_path(path)
{ }

lumi::NewFile::~NewFile()
{
    if (isHidden() && ownsHiddenName()) {
        QFile::remove(m_hiddenPath);
    }
}

bool lumi::NewFile::open()
{
    constexpr int kFlags = O_TMPFILE | O_WRONLY | O_CLOEXEC;
    m_file = Descriptor(::open(QFile::encodeName(folderOf(m_path)).constData(), kFlags, kMode));
    if (!m_file.isOpen()) {
        openHidden();
    }
    return note(m_file.isOpen() ? 0 : errno);
}

void lumi::NewFile::openHidden()
{
    constexpr int kFlags = O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC;
    const QString path = folderOf(m_path) + QLatin1Char('/') + QLatin1String(kHiddenName);
    const QByteArray name = QFile::encodeName(path);
    ::unlink(name.constData());
    m_file = Descriptor(::open(name.constData(), kFlags, kMode));
    if (m_file.isOpen()) {
        m_hiddenPath = path;
    }
}

/// True if there was no error. Only the first error is kept.
bool lumi::NewFile::note(int error)
{
    if (m_error == 0) {
        m_error = error;
    }
    return error == 0;
}

qint64 lumi::NewFile::write(const char *bytes, qint64 size)
{
    qint64 written = 0;
    while (written < size) {
        const ssize_t part
            = ::write(m_file.get(), bytes + written, static_cast<std::size_t>(size - written));
        if (part < 0 && errno == EINTR) {
            continue;
        }
        if (part <= 0) {
            (void)note(part < 0 ? errno : EIO);
            break;
        }
        written += part;
    }
    m_size += written;
    return written > 0 || size == 0 ? written : -1;
}

bool lumi::NewFile::sync()
{
    return note(syncFile(m_file.get()));
}

bool lumi::NewFile::commit()
{
    if (m_error != 0 || !note(flush()) || !note(giveName())) {
        return false;
    }
    m_hiddenPath.clear();
    m_file = Descriptor();
    return true;
}

/// Some file systems report a failed write only when a descriptor is closed. A duplicate is closed
/// here, so that the file without a name is kept.
int lumi::NewFile::flush() const
{
    const int second = ::fcntl(m_file.get(), F_DUPFD_CLOEXEC, 0);
    return second >= 0 && (::close(second) == 0 || errno == EINTR) ? 0 : errno;
}

int lumi::NewFile::giveName() const
{
    if (isHidden()) {
        // Another program may have begun a file of its own under this name.
        return ownsHiddenName() ? renameNoReplace(m_hiddenPath, m_path) : EBUSY;
    }
    char link[32];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", m_file.get());
    const QByteArray name = QFile::encodeName(m_path);
    return ::linkat(AT_FDCWD, link, AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

bool lumi::NewFile::ownsHiddenName() const
{
    struct stat own = {};
    struct stat named = {};
    return ::fstat(m_file.get(), &own) == 0
        && ::lstat(QFile::encodeName(m_hiddenPath).constData(), &named) == 0
        && own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

int lumi::writeNewFile(const QString &path, const QByteArray &bytes)
{
    NewFile file(path);
    if (file.open()) {
        (void)file.write(bytes.constData(), bytes.size());
        (void)file.commit();
    }
    return file.error();
}
