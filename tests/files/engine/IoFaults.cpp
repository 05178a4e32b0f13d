// SPDX-License-Identifier: MIT
#include "tests/files/engine/IoFaults.h"

#include <QFile>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

using lumi::test::IoFaults;

namespace {

constexpr int kNever = 0;
constexpr uid_t kNobody = 65534;
constexpr std::size_t kPathRoom = 4096;

struct Plan
{
    int calls = 0;
    int first = kNever; ///< calls from this one
    int last = kNever;  ///< to this one fail
    int error = 0;
};

// Plain data: these calls also come before main and after it.
std::array<Plan, IoFaults::CallCount> plans;
std::array<char, kPathRoom> watched{};
int shortWrite = kNever;
int shortBytes = 0;
int endingRead = kNever;
std::size_t refusedArray = 0;
IoFaults::Call deedCall = IoFaults::CallCount;
int deedNth = kNever;
std::function<void()> *deed = nullptr; // no destructor: calls come after main too

bool isWatched(const char *path)
{
    const std::size_t length = std::strlen(watched.data());
    return length > 0 && std::strncmp(path, watched.data(), length) == 0;
}

bool isWatched(int fd)
{
    if (watched.front() == 0) {
        return false;
    }
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", fd);
    std::array<char, kPathRoom> path{};
    const long length = ::syscall(SYS_readlink, link.data(), path.data(), path.size() - 1);
    return length > 0 && isWatched(path.data());
}

void doDeed()
{
    const std::function<void()> now = *deed;
    delete deed;
    deed = nullptr;
    now();
}

bool isDue(IoFaults::Call call)
{
    Plan &plan = plans.at(call);
    ++plan.calls;
    if (deed != nullptr && deedCall == call && deedNth == plan.calls) {
        doDeed();
    }
    if (plan.first == kNever || plan.calls < plan.first || plan.calls > plan.last) {
        return false;
    }
    errno = plan.error;
    return true;
}

int openAnyway(const char *path, int flags, mode_t mode)
{
    if (isWatched(path) && (flags & O_DIRECTORY) == 0) {
        const bool writes = (flags & O_ACCMODE) != O_RDONLY;
        if (isDue(writes ? IoFaults::OpenToWrite : IoFaults::OpenToRead)) {
            return -1;
        }
    }
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openAnyway(path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openAnyway(path, flags, mode);
}

ssize_t read(int fd, void *buffer, size_t size)
{
    if (isWatched(fd)) {
        if (isDue(IoFaults::Read)) {
            return -1;
        }
        if (plans.at(IoFaults::Read).calls == endingRead) {
            return 0;
        }
    }
    return ::syscall(SYS_read, fd, buffer, size);
}

ssize_t write(int fd, const void *buffer, size_t size)
{
    if (isWatched(fd)) {
        if (isDue(IoFaults::Write)) {
            return -1;
        }
        if (plans.at(IoFaults::Write).calls == shortWrite) {
            size = std::min(size, static_cast<size_t>(shortBytes));
        }
    }
    return ::syscall(SYS_write, fd, buffer, size);
}

int fsync(int fd)
{
    return isWatched(fd) && isDue(IoFaults::Sync) ? -1 : static_cast<int>(::syscall(SYS_fsync, fd));
}

int close(int fd)
{
    const bool fails = isWatched(fd) && isDue(IoFaults::Close);
    const int error = errno;
    const int result = static_cast<int>(::syscall(SYS_close, fd));
    if (fails) {
        errno = error;
    }
    return fails ? -1 : result;
}

int unlink(const char *path) noexcept
{
    return isWatched(path) && isDue(IoFaults::Remove)
        ? -1
        : static_cast<int>(::syscall(SYS_unlink, path));
}
}

void *operator new[](std::size_t size, const std::nothrow_t & /*tag*/) noexcept
{
    if (refusedArray != 0 && size == refusedArray) {
        refusedArray = 0;
        return nullptr;
    }
    return ::operator new[](size);
}

namespace lumi::test {

IoFaults::IoFaults(const QString &folder)
{
    const QByteArray name = QFile::encodeName(folder);
    if (name.size() >= qsizetype(kPathRoom)) {
        qFatal("the folder's name is too long");
    }
    plans.fill(Plan());
    std::copy(name.begin(), name.end(), watched.begin());
}

IoFaults::~IoFaults()
{
    watched.fill(0);
    plans.fill(Plan());
    shortWrite = kNever;
    endingRead = kNever;
    refusedArray = 0;
    delete deed;
    deed = nullptr;
}

void IoFaults::fail(Call call, int nth, int error)
{
    plans.at(call) = Plan{plans.at(call).calls, nth, nth, error};
}

void IoFaults::failFrom(Call call, int nth, int error)
{
    plans.at(call) = Plan{plans.at(call).calls, nth, std::numeric_limits<int>::max(), error};
}

void IoFaults::shortenWrite(int nth, int bytes)
{
    shortWrite = nth;
    shortBytes = bytes;
}

void IoFaults::endReads(int nth)
{
    endingRead = nth;
}

void IoFaults::doBefore(Call call, int nth, std::function<void()> what)
{
    deedCall = call;
    deedNth = nth;
    delete deed;
    deed = new std::function<void()>(std::move(what));
}

void IoFaults::refuseArray(int bytes)
{
    refusedArray = static_cast<std::size_t>(bytes);
}

int IoFaults::count(Call call) const
{
    return plans.at(call).calls;
}

OrdinaryUser::OrdinaryUser()
    : m_wasRoot(::geteuid() == 0)
{
    if (m_wasRoot && ::setresuid(kNobody, kNobody, 0) != 0) {
        qFatal("cannot become an ordinary user");
    }
}

OrdinaryUser::~OrdinaryUser()
{
    if (m_wasRoot && ::setresuid(0, 0, 0) != 0) {
        qFatal("cannot become root again");
    }
}

} // namespace lumi::test
