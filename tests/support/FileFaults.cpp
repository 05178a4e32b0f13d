// SPDX-License-Identifier: MIT
#include "tests/support/FileFaults.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using lumi::test::FileFaults;

namespace {

constexpr int kLastCall = std::numeric_limits<int>::max();
constexpr std::size_t kPathRoom = 4096;
/// The system shows a file without a name as "folder/#123 (deleted)".
constexpr const char *kUnnamed = "unnamed";

enum class What { Nothing, Fail, Shorten, Happen };

struct Plan
{
    What what = What::Nothing;
    unsigned calls = 0;
    int first = 0;
    int last = 0;
    int error = 0;
    int bytes = 0;
    std::function<void()> happening;
};

struct Step
{
    unsigned call = 0;
    std::string text;
};

/// Made when a watch begins, not before, because these calls are also made before main().
struct Watch
{
    std::string folder;
    std::vector<Step> steps;
    std::vector<Plan> plans;
    int hits = 0;
    bool paused = false;
    pid_t process = ::getpid();
};

Watch *watch = nullptr;

/// What the caller of step() has to do.
struct Fault
{
    What what = What::Nothing;
    int bytes = 0;
};

int countOf(unsigned calls)
{
    const auto isMeant = [calls](const Step &step) {
        return (step.call & calls) != 0;
    };
    return static_cast<int>(std::count_if(watch->steps.begin(), watch->steps.end(), isMeant));
}

/// False in a child before it starts another program, because the child shares this process's
/// memory and has a small stack.
bool isWatching()
{
    return watch != nullptr && !watch->paused && watch->process == ::getpid();
}

/// The name of a file in the watched folder, "." for the folder; empty for all others.
std::string watchedName(const char *path)
{
    if (!isWatching() || path == nullptr
        || std::strncmp(path, watch->folder.c_str(), watch->folder.size()) != 0) {
        return {};
    }
    const std::string rest = path + watch->folder.size();
    if (rest.empty()) {
        return ".";
    }
    if (rest.rfind("/#", 0) == 0) {
        return kUnnamed;
    }
    return rest.front() == '/' ? rest.substr(1) : std::string();
}

std::string pathOf(int handle)
{
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", handle);
    std::array<char, kPathRoom> path{};
    const long length
        = ::syscall(SYS_readlinkat, AT_FDCWD, link.data(), path.data(), path.size() - 1);
    return length > 0 ? std::string(path.data()) : std::string();
}

std::string watchedName(int handle)
{
    return isWatching() ? watchedName(pathOf(handle).c_str()) : std::string();
}

bool isDue(const Plan &plan, unsigned call)
{
    const int number = countOf(plan.calls);
    return (plan.calls & call) != 0 && number >= plan.first && number <= plan.last;
}

Fault carryOut(const Plan &plan)
{
    if (plan.what == What::Happen) {
        watch->paused = true;
        plan.happening();
        watch->paused = false;
        if (plan.error == 0) {
            return {};
        }
    }
    ++watch->hits;
    errno = plan.error;
    return {plan.what, plan.bytes};
}

/// Records the step and runs the plan for it.
Fault step(unsigned call, const char *word, const std::string &name)
{
    if (name.empty()) {
        return {};
    }
    watch->steps.push_back({call, std::string(word) + ' ' + name});
    for (const Plan &plan : watch->plans) {
        if (isDue(plan, call)) {
            const Plan due = plan; // the function may add plans
            return carryOut(due);
        }
    }
    return {};
}

bool mustFail(const Fault &fault)
{
    return fault.what == What::Fail || fault.what == What::Happen;
}

bool fails(unsigned call, const char *word, const std::string &name)
{
    return mustFail(step(call, word, name));
}

bool makesUnnamed(int flags)
{
    return (flags & O_TMPFILE) == O_TMPFILE;
}

unsigned openCallOf(int flags)
{
    if (makesUnnamed(flags)) {
        return FileFaults::OpenToWrite;
    }
    if ((flags & O_DIRECTORY) != 0) {
        return FileFaults::OpenFolder;
    }
    return (flags & O_ACCMODE) == O_RDONLY ? FileFaults::OpenToRead : FileFaults::OpenToWrite;
}

int opened(const char *path, int flags, mode_t mode)
{
    const std::string name = watchedName(path);
    if (fails(openCallOf(flags), "open", name == "." && makesUnnamed(flags) ? kUnnamed : name)) {
        return -1;
    }
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

mode_t modeOf(int flags, va_list arguments)
{
    const bool isNew = (flags & O_CREAT) != 0 || makesUnnamed(flags);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the callers call va_start
    return isNew ? va_arg(arguments, mode_t) : 0;
}

std::size_t shortened(const Fault &fault, std::size_t size)
{
    return fault.what == What::Shorten ? std::min(size, static_cast<std::size_t>(fault.bytes))
                                       : size;
}

template <class Number> int asInt(Number result)
{
    return static_cast<int>(result);
}

template <class Entry> Entry *nextEntry(const char *function, DIR *folder)
{
    if (fails(FileFaults::ReadFolder, "next entry", watchedName(::dirfd(folder)))) {
        return nullptr;
    }
    using Next = Entry *(DIR *);
    return reinterpret_cast<Next *>(::dlsym(RTLD_NEXT, function))(folder);
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
    return opened(path, flags | O_LARGEFILE, mode);
}

ssize_t read(int handle, void *buffer, size_t size)
{
    const Fault fault = step(FileFaults::Read, "read", watchedName(handle));
    return mustFail(fault) ? -1 : ::syscall(SYS_read, handle, buffer, shortened(fault, size));
}

ssize_t write(int handle, const void *buffer, size_t size)
{
    const Fault fault = step(FileFaults::Write, "write", watchedName(handle));
    return mustFail(fault) ? -1 : ::syscall(SYS_write, handle, buffer, shortened(fault, size));
}

int fsync(int handle)
{
    return fails(FileFaults::Sync, "sync", watchedName(handle))
        ? -1
        : asInt(::syscall(SYS_fsync, handle));
}

int fchmod(int handle, mode_t mode) noexcept
{
    return fails(FileFaults::Chmod, "chmod", watchedName(handle))
        ? -1
        : asInt(::syscall(SYS_fchmod, handle, mode));
}

int close(int handle)
{
    const bool isFailing = fails(FileFaults::Close, "close", watchedName(handle));
    const int error = errno;
    const int result = asInt(::syscall(SYS_close, handle));
    errno = isFailing ? error : errno;
    return isFailing ? -1 : result;
}

int unlink(const char *path) noexcept
{
    return fails(FileFaults::Remove, "remove", watchedName(path))
        ? -1
        : asInt(::syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    return fails(FileFaults::Link, "link", watchedName(to))
        ? -1
        : asInt(::syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int rename(const char *from, const char *to) noexcept
{
    return fails(FileFaults::RenamePlainly, "rename plainly", watchedName(from))
        ? -1
        : asInt(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned int flags) noexcept
{
    return fails(FileFaults::Rename, "rename", watchedName(from))
        ? -1
        : asInt(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return fails(FileFaults::MakeFolder, "make", watchedName(path))
        ? -1
        : asInt(::syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

DIR *opendir(const char *path)
{
    if (fails(FileFaults::ListFolder, "list", watchedName(path))) {
        return nullptr;
    }
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
    const int handle = asInt(::syscall(SYS_openat, AT_FDCWD, path, kFlags));
    return handle < 0 ? nullptr : ::fdopendir(handle);
}

dirent *readdir(DIR *folder)
{
    return nextEntry<dirent>("readdir", folder);
}

dirent64 *readdir64(DIR *folder)
{
    return nextEntry<dirent64>("readdir64", folder);
}
}

namespace lumi::test {

FileFaults::FileFaults(const QString &folder)
{
    static Watch only;
    only = {};
    only.folder = QFile::encodeName(folder).toStdString();
    watch = &only;
}

FileFaults::~FileFaults()
{
    watch = nullptr;
}

void FileFaults::fail(unsigned calls, int nth, int error)
{
    watch->plans.push_back({What::Fail, calls, nth, nth, error, 0, {}});
}

void FileFaults::failFrom(unsigned calls, int nth, int error)
{
    watch->plans.push_back({What::Fail, calls, nth, kLastCall, error, 0, {}});
}

void FileFaults::shorten(unsigned calls, int nth, int bytes)
{
    watch->plans.push_back({What::Shorten, calls, nth, nth, 0, bytes, {}});
}

void FileFaults::doBefore(unsigned calls, int nth, std::function<void()> happening, int error)
{
    watch->plans.push_back({What::Happen, calls, nth, nth, error, 0, std::move(happening)});
}

int FileFaults::count(unsigned calls) const
{
    return countOf(calls);
}

int FileFaults::hits() const
{
    return watch->hits;
}

QStringList FileFaults::steps() const
{
    QStringList steps;
    for (const Step &step : watch->steps) {
        steps.append(QString::fromStdString(step.text));
    }
    return steps;
}

} // namespace lumi::test
