// SPDX-License-Identifier: MIT
// Makes one system call on files fail: this program's own open, read, write, mkdir and unlink
// stand before those of the system, count the calls below a folder, and pass them on until
// their number comes up.
#pragma once

#include <QByteArray>
#include <QString>

namespace lumi::test {

class FileFaults
{
public:
    enum Calls : unsigned {
        Opens = 1,
        Reads = 2,
        Writes = 4,
        Mkdirs = 8,
        Unlinks = 16,
        AllCalls = 31
    };
    enum class Span { Once, FromThenOn };

    /// @param number of the call that fails, from 0 on
    /// @param error an errno value; 0 makes a read or write half as long instead
    FileFaults(const QString &folder, unsigned calls, int number, int error,
               Span span = Span::Once);
    ~FileFaults();
    FileFaults(const FileFaults &) = delete;
    FileFaults &operator=(const FileFaults &) = delete;

    /// Calls that have failed.
    [[nodiscard]] static int hits();
};

} // namespace lumi::test
