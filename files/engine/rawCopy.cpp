// SPDX-License-Identifier: MIT
#include "files/engine/rawCopy.h"

#include "platform/debugLog.h"
#include "platform/files/NewFile.h"
#include "platform/files/fileCalls.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

using lumi::PasteResult;

namespace {

constexpr std::size_t kBlockBytes = 8192;

/// Bytes read, 0 at the end, -1 on an error.
ssize_t readBlock(int fd, std::array<char, kBlockBytes> &block)
{
    ssize_t got = 0;
    do {
        got = ::read(fd, block.data(), block.size());
    } while (got < 0 && errno == EINTR);
    return got;
}

/// False on a read error, too: a failing card must not look like the end of the photo.
bool copyBlocks(int source, lumi::NewFile &target)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): each block is read before it is used
    std::array<char, kBlockBytes> block;
    ssize_t got = readBlock(source, block);
    while (got > 0 && target.write(block.data(), got) == got) {
        got = readBlock(source, block);
    }
    return got == 0;
}

bool isOfSize(int fd, qint64 size)
{
    struct stat figures = {};
    return ::fstat(fd, &figures) == 0 && figures.st_size == size;
}

} // namespace

PasteResult lumi::rawCopy(const QString &source, const QString &target, bool sourceGoes)
{
    const Descriptor from = openRegular(source);
    if (!from.isOpen()) {
        debugLog("errno = %d", errno);
        return PasteResult::SourceNotOpened;
    }
    NewFile to(target);
    if (!to.open()) {
        debugLog("errno = %d", to.error());
        return PasteResult::TargetNotMade;
    }
    if (!copyBlocks(from.get(), to) || (sourceGoes && !to.sync())
        || !isOfSize(from.get(), to.size())) {
        return PasteResult::NotWritten;
    }
    if (!to.commit()) {
        return to.error() == EEXIST ? PasteResult::TargetNotMade : PasteResult::NotWritten;
    }
    // The source may be removed only when the name of its copy is on the disk, too.
    if (sourceGoes && syncFolder(QFileInfo(target).path()) != 0) {
        QFile::remove(target);
        return PasteResult::NotWritten;
    }
    return PasteResult::Done;
}
