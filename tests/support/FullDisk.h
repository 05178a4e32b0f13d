// SPDX-License-Identifier: MIT
// Makes writes fail as on a full disk while it exists: with a tiny file system mounted over a folder
// if this process may mount, otherwise by a limit on the size of files.
#pragma once

#include <QByteArray>
#include <QString>

#include <sys/resource.h>

namespace lumi::test {

/// Files of this process can't grow beyond this many bytes.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before{};
};

/// A file system of this many KB over an existing, empty folder, seen by this process alone.
class SmallDisk
{
public:
    SmallDisk(const QString &folder, int kilobytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    /// False where this process may not mount anything; the folder is then as before.
    [[nodiscard]] bool isMounted() const { return m_mounted; }

private:
    QByteArray m_folder;
    bool m_mounted = false;
};

} // namespace lumi::test
