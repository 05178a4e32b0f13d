// SPDX-License-Identifier: MIT
// Records the C library's calls on one folder and its files in their order. Single calls can fail,
// or a function can run before them. The test program compiles this file in, so its versions of the
// calls replace those of the library. For faults at every call, and kills, see tests/faults.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace lumi::test {

/// Only one can exist at a time.
class FileFaults
{
public:
    enum Call : unsigned {
        OpenToRead = 1U << 0,
        OpenToWrite = 1U << 1,
        OpenFolder = 1U << 2, ///< for a handle; ListFolder is for its entries
        Open = OpenToRead | OpenToWrite | OpenFolder,
        Read = 1U << 3,
        Write = 1U << 4,
        Sync = 1U << 5,
        Chmod = 1U << 6,
        Close = 1U << 7,
        Remove = 1U << 8,
        Rename = 1U << 9,
        RenamePlainly = 1U << 10, ///< without a flag that protects the target
        MakeFolder = 1U << 11,
        ListFolder = 1U << 12,
        Link = 1U << 13, ///< gives an unnamed file its name
        AnyCall = (1U << 14) - 1,
        ReadFolder = 1U << 14 ///< the next entry; not one of AnyCall
    };

    /// Calls are counted from now on.
    explicit FileFaults(const QString &folder);
    /// Everything works again.
    ~FileFaults();
    FileFaults(const FileFaults &) = delete;
    FileFaults &operator=(const FileFaults &) = delete;

    /// The nth of these calls (one Call or several, counted from 1) returns -1 with this errno. A
    /// close() that fails still closes the file.
    void fail(unsigned calls, int nth, int error);
    /// The nth of these calls and all later ones fail.
    void failFrom(unsigned calls, int nth, int error);
    /// The nth of these calls transfers at most this many bytes. With 0 a read finds the end.
    void shorten(unsigned calls, int nth, int bytes);
    /// A function runs just before the nth of these calls; its own calls are not counted. If an
    /// errno is given, the call itself then fails.
    void doBefore(unsigned calls, int nth, std::function<void()> happening, int error = 0);

    /// The number of these calls so far.
    [[nodiscard]] int count(unsigned calls) const;
    /// The number of calls that failed or were shortened.
    [[nodiscard]] int hits() const;
    /// What was called and with which file so far: "open a.jpg", "read", "write", "sync", "chmod",
    /// "close", "remove", "rename", "rename plainly", "make", "list", "next entry", "link". The
    /// folder itself is ".", a file without a name is "unnamed".
    [[nodiscard]] QStringList steps() const;
};

} // namespace lumi::test
