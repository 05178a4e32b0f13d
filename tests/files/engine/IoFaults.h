// SPDX-License-Identifier: MIT
// Makes single calls of the C library fail for the files of one folder: this program's own
// versions of them stand before those of the library and go straight to the system, unless the
// call that is asked for is due.
#pragma once

#include <QString>

#include <functional>

namespace lumi::test {

class IoFaults
{
public:
    enum Call { OpenToRead, OpenToWrite, Read, Write, Sync, Close, Remove, CallCount };

    /// Counts and faults begin for files whose path begins with this folder.
    explicit IoFaults(const QString &folder);
    /// Everything works again.
    ~IoFaults();
    IoFaults(const IoFaults &) = delete;
    IoFaults &operator=(const IoFaults &) = delete;

    /// This one call, counted from 1, gives -1 and this errno.
    void fail(Call call, int nth, int error);
    /// This one and all later calls fail.
    void failFrom(Call call, int nth, int error);
    /// This one write takes no more than these bytes.
    void shortenWrite(int nth, int bytes);
    /// This one read finds the end of the file.
    void endReads(int nth);
    /// Something happens just before this one call.
    void doBefore(Call call, int nth, std::function<void()> deed);
    /// The next array of this many bytes that may be refused is refused.
    static void refuseArray(int bytes);

    /// How many there have been.
    [[nodiscard]] int count(Call call) const;
};

/// While it lives, a process of root is one of an ordinary user, to whom permissions apply.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool m_wasRoot;
};

} // namespace lumi::test
