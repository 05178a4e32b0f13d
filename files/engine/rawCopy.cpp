// SPDX-License-Identifier: MIT
#include "files/engine/rawCopy.h"

#include "platform/debugLog.h"

#include <QFile>
#include <QFileInfo>
#include <QString>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::PasteResult;

namespace {

constexpr std::size_t kBlockBytes = 8192;
constexpr mode_t kNewFileMode = 0666; // less the user's mask

/// An open file, or -1.
class Descriptor
{
public:
    Descriptor(const QString &path, int flags)
        : m_fd(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, kNewFileMode))
    {
        if (m_fd < 0) {
            debugLog("errno = %d", errno);
        }
    }

    ~Descriptor() { static_cast<void>(close()); }

    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] int fd() const { return m_fd; }

    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }

    /// Some file systems tell only here that a write has failed.
    [[nodiscard]] bool close()
    {
        const int fd = m_fd;
        m_fd = -1;
        return fd < 0 || ::close(fd) == 0 || errno == EINTR;
    }

private:
    int m_fd;
};

bool isRegular(int fd)
{
    struct stat figures = {};
    return ::fstat(fd, &figures) == 0 && S_ISREG(figures.st_mode);
}

template <class Call> ssize_t untilNotInterrupted(Call call)
{
    ssize_t result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

PasteResult copyBlocks(int source, int target)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): each block is read before it is used
    std::array<char, kBlockBytes> block;
    for (;;) {
        const ssize_t taken = untilNotInterrupted([&] {
            return ::read(source, block.data(), block.size());
        });
        if (taken == 0) {
            return PasteResult::Done;
        }
        // A failing card must not pass for the end of the photo.
        if (taken < 0) {
            return PasteResult::NotWritten;
        }
        const ssize_t written = untilNotInterrupted([&] {
            return ::write(target, block.data(), static_cast<std::size_t>(taken));
        });
        if (written != taken) {
            return PasteResult::NotWritten;
        }
    }
}

bool areOfOneSize(int source, int target)
{
    struct stat one = {};
    struct stat other = {};
    return ::fstat(source, &one) == 0 && ::fstat(target, &other) == 0
        && one.st_size == other.st_size;
}

bool isOnDisk(int fd)
{
    const auto sync = [fd] {
        return static_cast<ssize_t>(::fsync(fd));
    };
    // Where nothing can be synced there is nothing to wait for.
    return untilNotInterrupted(sync) == 0 || errno == EINVAL;
}

/// The name of a new file is written with its folder, not with the file. False too in a folder
/// that may be written but not read, where nothing can tell: a photo is only cut if it is safe.
bool isNameOnDisk(const QString &path)
{
    const Descriptor folder(QFileInfo(path).path(), O_RDONLY | O_DIRECTORY);
    return folder.isOpen() && isOnDisk(folder.fd());
}

} // namespace

PasteResult lumi::rawCopy(const QString &source, const QString &target, bool sourceGoes)
{
    // A pipe that has taken a photo's place would hold the open call for ever.
    const Descriptor from(source, O_RDONLY | O_NONBLOCK);
    if (!from.isOpen() || !isRegular(from.fd())) {
        return PasteResult::SourceNotOpened;
    }
    Descriptor to(target, O_WRONLY | O_CREAT | O_EXCL);
    if (!to.isOpen()) {
        return PasteResult::TargetNotMade;
    }
    PasteResult result = copyBlocks(from.fd(), to.fd());
    if (result == PasteResult::Done && sourceGoes
        && !(isOnDisk(to.fd()) && areOfOneSize(from.fd(), to.fd()))) {
        result = PasteResult::NotWritten;
    }
    if (!to.close() || (result == PasteResult::Done && sourceGoes && !isNameOnDisk(target))) {
        result = PasteResult::NotWritten;
    }
    if (result != PasteResult::Done) {
        QFile::remove(target);
    }
    return result;
}
