// SPDX-License-Identifier: MIT
// File operations that Qt lacks, or that are too unsafe in Qt for the only copy of a photo. They
// return errno values, 0 for success, and repeat interrupted calls.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>

namespace lumi {

/// An open file descriptor, or -1. Closes it when destroyed.
class Descriptor
{
public:
    explicit Descriptor(int fd = -1)
        : m_fd(fd)
    { }

    ~Descriptor() { reset(-1); }

    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    Descriptor(Descriptor &&other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    { }

    Descriptor &operator=(Descriptor &&other) noexcept
    {
        reset(std::exchange(other.m_fd, -1));
        return *this;
    }

    [[nodiscard]] int get() const { return m_fd; }

    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }

private:
    void reset(int fd);

    int m_fd;
};

/// Opens a regular file for reading. Anything else, such as a pipe that would block, is refused
/// with EINVAL; errno holds the error.
[[nodiscard]] Descriptor openRegular(const QString &path);

/// The content of a regular file. Null if it can't be read, or is larger than 1 MiB. For files
/// whose paths come from outside, such as the machine profile and what it names.
[[nodiscard]] std::optional<QByteArray> readSmallFile(const QString &path);

/// Whether this is the name of a regular file itself. A link to one doesn't count.
[[nodiscard]] bool isRegular(const QString &path);

/// Whether something has this name. A dangling link counts.
[[nodiscard]] bool isTaken(const QString &path);

/// Renames a file. Never replaces another one (EEXIST) and never copies. If the file system has no
/// rename that refuses a taken name, the name is tested first.
[[nodiscard]] int renameNoReplace(const QString &from, const QString &to);

/// Syncs the contents of a file. Succeeds if the file system cannot sync.
[[nodiscard]] int syncFile(int fd);

/// Syncs the names in a folder.
[[nodiscard]] int syncFolder(const QString &folder);

} // namespace lumi
