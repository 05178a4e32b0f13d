// SPDX-License-Identifier: MIT
#include "tests/exif/FolderCalls.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kLastStep = std::numeric_limits<int>::max();
constexpr std::size_t kPathRoom = 4096;

enum class What { Nothing, Fail, Shorten, Happen, Kill, KillWithin };

struct Plan
{
    What what = What::Nothing;
    int first = 0;
    int last = 0;
    int error = 0;
    int bytes = 0;
    std::string file; // of the first step; later ones on other files go on
    std::function<void()> happening;
};

/// Made when a watch begins and never before, since these calls come before main as well.
struct Watch
{
    std::string folder;
    std::vector<std::string> steps;
    Plan plan;
    bool paused = false;
};

Watch *watch = nullptr;

/// The name of a file in the watched folder, "." for the folder; empty for all others.
std::string watchedName(const char *path)
{
    if (watch == nullptr || watch->paused
        || std::strncmp(path, watch->folder.c_str(), watch->folder.size()) != 0) {
        return {};
    }
    const std::string rest = path + watch->folder.size();
    if (rest.empty()) {
        return ".";
    }
    return rest.front() == '/' ? rest.substr(1) : std::string();
}

std::string watchedName(int handle)
{
    if (watch == nullptr || watch->paused) {
        return {};
    }
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", handle);
    std::array<char, kPathRoom> path{};
    const long length = ::syscall(SYS_readlink, link.data(), path.data(), path.size() - 1);
    return length > 0 ? watchedName(path.data()) : std::string();
}

/// Notes the step and does what is planned for it. What is left to its caller comes back.
What step(const char *call, const std::string &name)
{
    if (name.empty()) {
        return What::Nothing;
    }
    const int number = static_cast<int>(watch->steps.size());
    watch->steps.push_back(std::string(call) + ' ' + name);
    Plan &plan = watch->plan;
    if (plan.what == What::Nothing || number < plan.first || number > plan.last) {
        return What::Nothing;
    }
    if (number == plan.first) {
        plan.file = name;
    }
    if (plan.file != name) {
        return What::Nothing;
    }
    if (plan.what == What::Kill) {
        ::_exit(lumi::test::kKilled);
    }
    if (plan.what == What::Happen) {
        watch->paused = true;
        plan.happening();
        watch->paused = false;
    }
    errno = plan.error;
    const bool isUndisturbed = plan.what == What::Happen && plan.error == 0;
    return isUndisturbed ? What::Nothing : plan.what;
}

bool mustFail(What what)
{
    return what == What::Fail || what == What::Happen;
}

bool fails(const char *call, const std::string &name)
{
    return mustFail(step(call, name));
}

int opened(const char *path, int flags, mode_t mode)
{
    if (fails("open", watchedName(path))) {
        return -1;
    }
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}

std::size_t shortened(What what, std::size_t size)
{
    return what == What::Shorten ? std::min(size, static_cast<std::size_t>(watch->plan.bytes))
                                 : size;
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return opened(path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return opened(path, flags, mode);
}

ssize_t read(int handle, void *buffer, size_t size)
{
    const What what = step("read", watchedName(handle));
    return mustFail(what) ? -1 : ::syscall(SYS_read, handle, buffer, shortened(what, size));
}

ssize_t write(int handle, const void *buffer, size_t size)
{
    const What what = step("write", watchedName(handle));
    if (what == What::KillWithin) {
        ::syscall(SYS_write, handle, buffer, size / 2);
        ::_exit(lumi::test::kKilled);
    }
    return mustFail(what) ? -1 : ::syscall(SYS_write, handle, buffer, shortened(what, size));
}

int fsync(int handle)
{
    return fails("sync", watchedName(handle)) ? -1 : static_cast<int>(::syscall(SYS_fsync, handle));
}

int fchmod(int handle, mode_t mode) noexcept
{
    return fails("chmod", watchedName(handle))
        ? -1
        : static_cast<int>(::syscall(SYS_fchmod, handle, mode));
}

int close(int handle)
{
    const bool isFailing = fails("close", watchedName(handle));
    const int error = errno;
    const int result = static_cast<int>(::syscall(SYS_close, handle));
    errno = isFailing ? error : errno;
    return isFailing ? -1 : result;
}

int unlink(const char *path) noexcept
{
    return fails("remove", watchedName(path)) ? -1 : static_cast<int>(::syscall(SYS_unlink, path));
}

int rename(const char *from, const char *to) noexcept
{
    return fails("rename plainly", watchedName(from))
        ? -1
        : static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned int flags) noexcept
{
    return fails("rename", watchedName(from))
        ? -1
        : static_cast<int>(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}
}

namespace lumi::test {

FolderCalls::FolderCalls(const QString &folder)
{
    static Watch only;
    only = {};
    only.folder = QFile::encodeName(folder).toStdString();
    watch = &only;
}

FolderCalls::~FolderCalls()
{
    watch = nullptr;
}

QStringList FolderCalls::steps()
{
    QStringList steps;
    for (const std::string &step : watch->steps) {
        steps.append(QString::fromStdString(step));
    }
    return steps;
}

void FolderCalls::fail(int step, int error)
{
    watch->plan = {What::Fail, step, step, error, 0, {}, {}};
}

void FolderCalls::failFrom(int step, int error)
{
    watch->plan = {What::Fail, step, kLastStep, error, 0, {}, {}};
}

void FolderCalls::shorten(int step, int bytes)
{
    watch->plan = {What::Shorten, step, step, 0, bytes, {}, {}};
}

void FolderCalls::before(int step, std::function<void()> happening, int error)
{
    watch->plan = {What::Happen, step, step, error, 0, {}, std::move(happening)};
}

void FolderCalls::killBefore(int step)
{
    watch->plan = {What::Kill, step, step, 0, 0, {}, {}};
}

void FolderCalls::killWithin(int step)
{
    watch->plan = {What::KillWithin, step, step, 0, 0, {}, {}};
}

int inChild(const std::function<int()> &work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(work());
    }
    int status = 0;
    const bool ended = child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status);
    return ended ? WEXITSTATUS(status) : -1;
}

} // namespace lumi::test
