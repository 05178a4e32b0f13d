// SPDX-License-Identifier: MIT
#include "files/engine/copyFile.h"

#include "app/common/diskSpace.h"
#include "files/engine/folderEntries.h"
#include "platform/files/NewFile.h"
#include "platform/files/fileCalls.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>

using lumi::CopyDone;
using lumi::CopyNotRemoved;
using lumi::CopyRefused;
using lumi::CopyStopped;

namespace {

/// Largest block. Blocks are on the stack.
constexpr unsigned kMostBytes = 65536;
/// Block sizes are multiples of this.
constexpr unsigned kUnit = 4;

bool copyCancelled = false;

qint64 blockSize(unsigned wanted)
{
    const unsigned bounded = std::clamp(wanted, kUnit, kMostBytes);
    return qint64(bounded + kUnit - 1) / kUnit * kUnit;
}

/// The error codes of QFile, which callers expect.
int codeOfOpenError(int error)
{
    return error == EMFILE || error == ENFILE ? QFileDevice::ResourceError : QFileDevice::OpenError;
}

int codeOfWriteError(int error)
{
    return error == ENOSPC ? QFileDevice::ResourceError : QFileDevice::WriteError;
}

int copyBlocks(QFile *source, lumi::NewFile *target, lumi::KeepGoing keepGoing, qint64 size)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): each block is read before it is used
    std::array<char, kMostBytes> block;
    for (;;) {
        const qint64 taken = source->read(block.data(), size);
        if (taken <= 0) {
            return CopyDone;
        }
        QCoreApplication::processEvents();
        if (target->write(block.data(), taken) < 0) {
            return codeOfWriteError(target->error());
        }
        if (keepGoing != nullptr && !keepGoing()) {
            return CopyStopped;
        }
    }
}

/// Gives the target its name when it is as long as the source was.
int copyWhole(QFile *source, lumi::NewFile *target, lumi::KeepGoing keepGoing, qint64 blockBytes)
{
    const qint64 sourceSize = source->size();
    const int code = copyBlocks(source, target, keepGoing, blockBytes);
    if (code != CopyDone || target->size() < sourceSize || target->commit()) {
        return code;
    }
    return codeOfOpenError(target->error());
}

} // namespace

// NOLINTNEXTLINE(readability-function-size): callers need each of them
int copyFile(const QString &src, const QString &dst, bool move, bool failIfExists,
             lumi::KeepGoing keepGoing, unsigned bufferSize)
{
    QCoreApplication::processEvents();
    if (src == dst) {
        return QFile::exists(src) ? CopyDone : CopyRefused;
    }
    const lumi::Descriptor opened = lumi::openRegular(src);
    QFile source;
    if (!opened.isOpen()
        || !source.open(opened.get(), QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return codeOfOpenError(errno);
    }
    const bool isTaken = QFile::exists(dst);
    // The old target may be the source under another name.
    if (isTaken && (failIfExists || lumi::areOneFile(src, dst))) {
        return CopyRefused;
    }
    if (isTaken && !QFile::remove(dst)) {
        return CopyNotRemoved;
    }
    lumi::NewFile target(dst);
    if (!target.open()) {
        return codeOfOpenError(target.error());
    }
    const int code = copyWhole(&source, &target, keepGoing, blockSize(bufferSize));
    // Also after a failure: see the header.
    if (move && !QFile::remove(src)) {
        return CopyNotRemoved;
    }
    return code;
}

bool copyKeepGoing()
{
    return !copyCancelled;
}

void setCopyCancelled(bool cancelled)
{
    copyCancelled = cancelled;
}

bool isSpaceShort(int kb)
{
    return lumi::freeDocumentsKB() < kb;
}
