// SPDX-License-Identifier: MIT
#include "files/engine/copyFile.h"

#include "app/common/diskSpace.h"
#include "files/engine/folderEntries.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

using lumi::CopyDone;
using lumi::CopyNotRemoved;
using lumi::CopyRefused;
using lumi::CopyStopped;

namespace {

/// Of blocks, which lie on the stack.
constexpr unsigned kMostBytes = 65536;
/// Blocks are a multiple of this.
constexpr unsigned kUnit = 4;

bool copyCancelled = false;

qint64 blockSize(unsigned wanted)
{
    const unsigned bounded = std::clamp(wanted, kUnit, kMostBytes);
    return (bounded + kUnit - 1) / kUnit * kUnit;
}

int copyBlocks(QFile *source, QFile *target, lumi::KeepGoing keepGoing, qint64 size)
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
            return target->error();
        }
        if (keepGoing != nullptr && !keepGoing()) {
            return CopyStopped;
        }
    }
}

} // namespace

// NOLINTNEXTLINE(readability-function-size): callers need each of them
int copyFile(const QString &src, const QString &dst, bool move, bool failIfExists,
             lumi::KeepGoing keepGoing, unsigned bufferSize)
{
    QCoreApplication::processEvents();
    if (!QFile::exists(src)) {
        return CopyRefused;
    }
    if (src == dst) {
        return CopyDone;
    }
    // Reading a pipe or a device would wait for ever.
    if (!QFileInfo(src).isFile()) {
        return CopyRefused;
    }
    const bool isTaken = QFile::exists(dst);
    // Under another name the old one may be the source itself.
    if (isTaken && (failIfExists || lumi::areOneFile(src, dst))) {
        return CopyRefused;
    }
    QFile source(src);
    if (!source.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return source.error();
    }
    if (isTaken && !QFile::remove(dst)) {
        return CopyNotRemoved;
    }
    QFile target(dst);
    // A new one only: what has come there since then is somebody's file.
    if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        return target.error();
    }
    const int code = copyBlocks(&source, &target, keepGoing, blockSize(bufferSize));
    if (code != CopyDone) {
        // By its name: an open one would stay if closing it fails as well.
        target.close();
        QFile::remove(dst);
    }
    // Whatever the code is: see the header.
    if (move && !source.remove()) {
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
