// SPDX-License-Identifier: MIT
// Replaces functions of the C library. Each function counts a call that concerns a watched folder,
// disturbs it if the plan says so, and otherwise calls the function of the C library.
#include "tests/faults/preload/FaultPlan.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace lumi::faults;

namespace {

const Plan *plan = nullptr;
Tally *tally = nullptr;

using Path = std::array<char, PATH_MAX>;

enum class Fate { Passes, Fails, TakesHalf, FindsEnd, DiesWithin };

/// The C library's own function.
template <class Function> Function *next(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

[[noreturn]] void die()
{
    ::kill(::getpid(), SIGKILL);
    for (;;) {
        ::pause();
    }
}

/// The path of an open file. For a file without a name it begins with its folder.
Path pathOf(int handle)
{
    Path path{};
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", handle);
    if (::readlink(link.data(), path.data(), path.size() - 1) < 0) {
        path[0] = '\0';
    }
    return path;
}

Path pathOf(int folder, const char *name)
{
    Path path{};
    if (name[0] == '/') {
        std::snprintf(path.data(), path.size(), "%s", name);
        return path;
    }
    if (folder != AT_FDCWD) {
        path = pathOf(folder);
    } else if (::getcwd(path.data(), path.size()) == nullptr) {
        path[0] = '\0';
    }
    const std::size_t length = std::strlen(path.data());
    const char *slash = name[0] == '\0' ? "" : "/";
    std::snprintf(path.data() + length, path.size() - length, "%s%s", slash, name);
    return path;
}

bool isBelow(const Path &path, const char *folder)
{
    const std::size_t length = folder == nullptr ? 0 : std::strlen(folder);
    return length > 0 && std::strncmp(path.data(), folder, length) == 0
        && (path[length] == '/' || path[length] == '\0');
}

bool isWatched(const Path &path)
{
    return isBelow(path, plan->folders[0]) || isBelow(path, plan->folders[1]);
}

struct FileId
{
    dev_t device = 0;
    ino_t inode = 0;

    friend bool operator==(const FileId &, const FileId &) = default;
};

/// Files whose last bytes may still be lost. A writer has few of them at a time.
std::array<FileId, 8> unsafeFiles{};

struct stat stateOf(int handle)
{
    struct stat state = {};
    next<int(int, struct stat *)>("fstat")(handle, &state);
    return state;
}

FileId idOf(int handle)
{
    const struct stat state = stateOf(handle);
    return {state.st_dev, state.st_ino};
}

void replaceUnsafe(const FileId &old, const FileId &fresh)
{
    const auto found = std::find(unsafeFiles.begin(), unsafeFiles.end(), old);
    if (found != unsafeFiles.end()) {
        *found = fresh;
    }
}

bool isUnsafe(int handle)
{
    return std::find(unsafeFiles.begin(), unsafeFiles.end(), idOf(handle)) != unsafeFiles.end();
}

void noteWritten(int handle)
{
    if (plan != nullptr && !isUnsafe(handle)) {
        replaceUnsafe({}, idOf(handle));
    }
}

/// How the call is disturbed.
Fate fateOf(unsigned call, bool isFirst)
{
    switch (plan->act) {
    case Act::FillUp:
        return isFirst && call == Write ? Fate::TakesHalf : Fate::Fails;
    case Act::Shorten:
        return Fate::TakesHalf;
    case Act::EndTooSoon:
        return Fate::FindsEnd;
    case Act::KillBefore:
        die();
    case Act::KillWithin:
        return Fate::DiesWithin;
    default:
        return Fate::Fails;
    }
}

bool goesOn()
{
    return plan->act == Act::FailFrom || plan->act == Act::FillUp;
}

/// Counts the call and returns how it is disturbed.
Fate meetAt(unsigned call, const char *name, const Path &path)
{
    if ((plan->calls & call) == 0 || !isWatched(path)) {
        return Fate::Passes;
    }
    const int number = ++tally->calls;
    if (plan->act == Act::Nothing || number < plan->nth || (number > plan->nth && !goesOn())) {
        return Fate::Passes;
    }
    if (++tally->hits == 1) {
        std::snprintf(tally->hit.data(), tally->hit.size(), "%s %s", name, path.data());
    }
    return fateOf(call, number == plan->nth);
}

/// The same for the first sync or close of a file after writing, which may lose what was written.
Fate meetUnsafe(unsigned call, const char *name, int handle)
{
    if (!isUnsafe(handle)) {
        return Fate::Passes;
    }
    replaceUnsafe(idOf(handle), {});
    const Fate fate = meetAt(call, name, pathOf(handle));
    if (fate == Fate::Fails) {
        next<decltype(::ftruncate)>("ftruncate")(handle, stateOf(handle).st_size / 2);
    }
    return fate;
}

/// Changes errno only if the call fails.
Fate meet(unsigned call, const char *name, int handle)
{
    if (plan == nullptr) {
        return Fate::Passes;
    }
    const int before = errno;
    const bool mayLose = plan->act == Act::LoseWritten && (call & plan->calls) != 0;
    const Fate fate = mayLose ? meetUnsafe(call, name, handle) : meetAt(call, name, pathOf(handle));
    errno = fate == Fate::Fails ? plan->error : before;
    return fate;
}

Fate meet(unsigned call, const char *name, int folder, const char *file)
{
    if (plan == nullptr || file == nullptr) {
        return Fate::Passes;
    }
    const int before = errno;
    const Fate fate = meetAt(call, name, pathOf(folder, file));
    errno = fate == Fate::Fails ? plan->error : before;
    return fate;
}

/// Whether the file system lacks this function.
bool isRefused(bool isUnable, int error, int folder, const char *file)
{
    if (plan == nullptr || !isUnable || !isWatched(pathOf(folder, file))) {
        return false;
    }
    errno = error;
    return true;
}

/// A call on an open file. It returns -1 if it fails.
template <class... Arguments>
int onFile(unsigned call, const char *name, int handle, Arguments... arguments)
{
    return meet(call, name, handle) == Fate::Passes
        ? next<int(int, Arguments...)>(name)(handle, arguments...)
        : -1;
}

/// The same on a path.
template <class... Arguments>
int onPath(unsigned call, const char *name, const char *path, Arguments... arguments)
{
    return meet(call, name, AT_FDCWD, path) == Fate::Passes
        ? next<int(const char *, Arguments...)>(name)(path, arguments...)
        : -1;
}

/// The same on a path in an open folder.
template <class... Arguments>
int inFolder(unsigned call, const char *name, int folder, const char *path, Arguments... arguments)
{
    return meet(call, name, folder, path) == Fate::Passes
        ? next<int(int, const char *, Arguments...)>(name)(folder, path, arguments...)
        : -1;
}

/// A call that transfers bytes by transfer(size).
template <class Transfer>
ssize_t moved(unsigned call, const char *name, int handle, size_t size, Transfer transfer)
{
    const Fate fate = meet(call, name, handle);
    if (fate == Fate::Fails || fate == Fate::FindsEnd) {
        return fate == Fate::Fails ? -1 : 0;
    }
    const ssize_t done = transfer(fate == Fate::Passes ? size : (size + 1) / 2);
    if (call == Write && done > 0) {
        noteWritten(handle);
    }
    if (fate == Fate::DiesWithin) {
        die();
    }
    return done;
}

bool isUnnamed(int flags)
{
    return (flags & O_TMPFILE) == O_TMPFILE;
}

bool takesMode(int flags)
{
    return (flags & O_CREAT) != 0 || isUnnamed(flags);
}

int opened(const char *name, int folder, const char *path, int flags, mode_t mode)
{
    const bool isNew = takesMode(flags) || (flags & O_ACCMODE) != O_RDONLY;
    if (meet(isNew ? OpenNew : OpenOld, name, folder, path) != Fate::Passes) {
        return -1;
    }
    const bool isUnable = isUnnamed(flags) && plan != nullptr && plan->isWithoutUnnamedFiles;
    if (isRefused(isUnable, EOPNOTSUPP, folder, path)) {
        return -1;
    }
    return next<int(int, const char *, int, ...)>("openat")(folder, path, flags, mode);
}

int linked(int folder, const char *path, int newFolder, const char *newPath, int flags)
{
    if (meet(Name, "link", newFolder, newPath) != Fate::Passes
        || isRefused(plan != nullptr && plan->isWithoutUnnamedFiles, EPERM, newFolder, newPath)) {
        return -1;
    }
    return next<decltype(::linkat)>("linkat")(folder, path, newFolder, newPath, flags);
}

int renamed(int folder, const char *path, int newFolder, const char *newPath, unsigned flags)
{
    const bool isUnable = flags != 0 && plan != nullptr && plan->isWithoutConditions;
    if (meet(Name, "rename", newFolder, newPath) != Fate::Passes
        || isRefused(isUnable, EINVAL, newFolder, newPath)) {
        return -1;
    }
    return next<decltype(::renameat2)>("renameat2")(folder, path, newFolder, newPath, flags);
}

} // namespace

extern "C" {

void lumiArmFaults(const Plan *newPlan, Tally *newTally)
{
    tally = newTally;
    plan = newPlan;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

#define MODE_OF(flags)                                                                             \
    va_list arguments;                                                                             \
    va_start(arguments, flags);                                                                    \
    const mode_t mode = takesMode(flags) ? va_arg(arguments, mode_t) : 0;                          \
    va_end(arguments)

int open(const char *path, int flags, ...)
{
    MODE_OF(flags);
    return opened("open", AT_FDCWD, path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    MODE_OF(flags);
    return opened("open", AT_FDCWD, path, flags | O_LARGEFILE, mode);
}

int openat(int folder, const char *path, int flags, ...)
{
    MODE_OF(flags);
    return opened("open", folder, path, flags, mode);
}

int openat64(int folder, const char *path, int flags, ...)
{
    MODE_OF(flags);
    return opened("open", folder, path, flags | O_LARGEFILE, mode);
}

int creat(const char *path, mode_t mode)
{
    return opened("open", AT_FDCWD, path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}

ssize_t read(int handle, void *bytes, size_t size)
{
    return moved(Read, "read", handle, size, [=](size_t part) {
        return next<decltype(::read)>("read")(handle, bytes, part);
    });
}

ssize_t pread(int handle, void *bytes, size_t size, off_t place)
{
    return moved(Read, "read", handle, size, [=](size_t part) {
        return next<decltype(::pread)>("pread")(handle, bytes, part, place);
    });
}

ssize_t pread64(int handle, void *bytes, size_t size, off64_t place)
{
    return moved(Read, "read", handle, size, [=](size_t part) {
        return next<decltype(::pread64)>("pread64")(handle, bytes, part, place);
    });
}

ssize_t write(int handle, const void *bytes, size_t size)
{
    return moved(Write, "write", handle, size, [=](size_t part) {
        return next<decltype(::write)>("write")(handle, bytes, part);
    });
}

ssize_t pwrite(int handle, const void *bytes, size_t size, off_t place)
{
    return moved(Write, "write", handle, size, [=](size_t part) {
        return next<decltype(::pwrite)>("pwrite")(handle, bytes, part, place);
    });
}

ssize_t pwrite64(int handle, const void *bytes, size_t size, off64_t place)
{
    return moved(Write, "write", handle, size, [=](size_t part) {
        return next<decltype(::pwrite64)>("pwrite64")(handle, bytes, part, place);
    });
}

ssize_t copy_file_range(int from, off64_t *fromPlace, int to, off64_t *toPlace, size_t size,
                        unsigned flags)
{
    return moved(Write, "write", to, size, [=](size_t part) {
        return next<decltype(::copy_file_range)>("copy_file_range")(from, fromPlace, to, toPlace,
                                                                    part, flags);
    });
}

ssize_t sendfile(int to, int from, off_t *place, size_t size) noexcept
{
    return moved(Write, "write", to, size, [=](size_t part) {
        return next<decltype(::sendfile)>("sendfile")(to, from, place, part);
    });
}

ssize_t sendfile64(int to, int from, off64_t *place, size_t size) noexcept
{
    return moved(Write, "write", to, size, [=](size_t part) {
        return next<decltype(::sendfile64)>("sendfile64")(to, from, place, part);
    });
}

int fsync(int handle)
{
    return onFile(Sync, "fsync", handle);
}

int fdatasync(int handle)
{
    return onFile(Sync, "fdatasync", handle);
}

int syncfs(int handle) noexcept
{
    return onFile(Sync, "syncfs", handle);
}

int sync_file_range(int handle, off64_t place, off64_t size, unsigned flags)
{
    return onFile(Sync, "sync_file_range", handle, place, size, flags);
}

/// The handle is closed even if this fails, as in the system.
int close(int handle)
{
    const Fate fate = meet(Close, "close", handle);
    const int error = errno;
    const int result = next<decltype(::close)>("close")(handle);
    errno = fate == Fate::Fails ? error : errno;
    return fate == Fate::Fails ? -1 : result;
}

int link(const char *path, const char *newPath) noexcept
{
    return linked(AT_FDCWD, path, AT_FDCWD, newPath, 0);
}

int linkat(int folder, const char *path, int newFolder, const char *newPath, int flags) noexcept
{
    return linked(folder, path, newFolder, newPath, flags);
}

int rename(const char *path, const char *newPath) noexcept
{
    return renamed(AT_FDCWD, path, AT_FDCWD, newPath, 0);
}

int renameat(int folder, const char *path, int newFolder, const char *newPath) noexcept
{
    return renamed(folder, path, newFolder, newPath, 0);
}

int renameat2(int folder, const char *path, int newFolder, const char *newPath,
              unsigned flags) noexcept
{
    return renamed(folder, path, newFolder, newPath, flags);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return onPath(Name, "mkdir", path, mode);
}

int mkdirat(int folder, const char *path, mode_t mode) noexcept
{
    return inFolder(Name, "mkdirat", folder, path, mode);
}

int unlink(const char *path) noexcept
{
    return onPath(Remove, "unlink", path);
}

int unlinkat(int folder, const char *path, int flags) noexcept
{
    return inFolder(Remove, "unlinkat", folder, path, flags);
}

int remove(const char *path) noexcept
{
    return onPath(Remove, "remove", path);
}

int rmdir(const char *path) noexcept
{
    return onPath(Remove, "rmdir", path);
}

int ftruncate(int handle, off_t size) noexcept
{
    return onFile(Change, "ftruncate", handle, size);
}

int ftruncate64(int handle, off64_t size) noexcept
{
    return onFile(Change, "ftruncate64", handle, size);
}

int truncate64(const char *path, off64_t size) noexcept
{
    return onPath(Change, "truncate64", path, size);
}

int fchmod(int handle, mode_t mode) noexcept
{
    return onFile(Change, "fchmod", handle, mode);
}

int chmod(const char *path, mode_t mode) noexcept
{
    return onPath(Change, "chmod", path, mode);
}

int futimens(int handle, const struct timespec times[2]) noexcept
{
    return onFile(Change, "futimens", handle, times);
}

int access(const char *path, int mode) noexcept
{
    return onPath(Look, "access", path, mode);
}

int stat(const char *path, struct stat *state) noexcept
{
    return onPath(Look, "stat", path, state);
}

int stat64(const char *path, struct stat64 *state) noexcept
{
    return onPath(Look, "stat64", path, state);
}

int lstat(const char *path, struct stat *state) noexcept
{
    return onPath(Look, "lstat", path, state);
}

int lstat64(const char *path, struct stat64 *state) noexcept
{
    return onPath(Look, "lstat64", path, state);
}

int fstat(int handle, struct stat *state) noexcept
{
    return onFile(Look, "fstat", handle, state);
}

int fstat64(int handle, struct stat64 *state) noexcept
{
    return onFile(Look, "fstat64", handle, state);
}

int fstatat(int folder, const char *path, struct stat *state, int flags) noexcept
{
    return inFolder(Look, "fstatat", folder, path, state, flags);
}

int statx(int folder, const char *path, int flags, unsigned mask, struct statx *state) noexcept
{
    return inFolder(Look, "statx", folder, path, flags, mask, state);
}

DIR *opendir(const char *path)
{
    return meet(Look, "opendir", AT_FDCWD, path) == Fate::Passes
        ? next<decltype(::opendir)>("opendir")(path)
        : nullptr;
}

struct dirent *readdir(DIR *folder)
{
    return meet(Look, "readdir", ::dirfd(folder)) == Fate::Passes
        ? next<decltype(::readdir)>("readdir")(folder)
        : nullptr;
}

struct dirent64 *readdir64(DIR *folder)
{
    return meet(Look, "readdir", ::dirfd(folder)) == Fate::Passes
        ? next<decltype(::readdir64)>("readdir64")(folder)
        : nullptr;
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
}
