// SPDX-License-Identifier: MIT
// Watches the calls of the C library that concern one folder and its files, in their order,
// and lets one of them go wrong or end the process. This program's own versions of the calls
// stand before those of the library and go straight to the system.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace lumi::test {

class FolderCalls
{
public:
    /// Steps are counted from 0 as of now.
    explicit FolderCalls(const QString &folder);
    /// Everything works again.
    ~FolderCalls();
    FolderCalls(const FolderCalls &) = delete;
    FolderCalls &operator=(const FolderCalls &) = delete;

    /// What was called and with which file so far, a "." for the folder itself: "open a.jpg",
    /// "read", "write", "chmod", "sync", "close", "remove", "rename", "rename plainly".
    [[nodiscard]] static QStringList steps();

    /// One of these may be asked for at a time. The step gives -1 and this errno. A file to be
    /// closed is closed all the same.
    static void fail(int step, int error);
    /// This step and all later ones on the same file fail.
    static void failFrom(int step, int error);
    /// The step reads or writes no more than these bytes; with 0 a read finds the end.
    static void shorten(int step, int bytes);
    /// Something else happens just before the step; what it calls does not count. With an
    /// errno the step itself fails then.
    static void before(int step, std::function<void()> happening, int error = 0);
    /// The process ends just before the step.
    static void killBefore(int step);
    /// The process ends in the middle of a write, half of it done.
    static void killWithin(int step);
};

constexpr int kKilled = 99;

/// Runs work in a child of this process. Its result, kKilled when it was ended, or -1.
[[nodiscard]] int inChild(const std::function<int()> &work);

} // namespace lumi::test
