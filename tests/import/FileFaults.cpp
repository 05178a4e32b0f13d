// SPDX-License-Identifier: MIT
#include "tests/import/FileFaults.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::test::FileFaults;

namespace {

struct Plan
{
    bool isOn = false;
    QByteArray folder;
    unsigned calls = 0;
    int number = 0;
    int error = 0;
    FileFaults::Span span = FileFaults::Span::Once;
    int seen = 0;
    int hits = 0;
};

Plan &plan()
{
    static Plan thePlan;
    return thePlan;
}

bool isBelow(const char *path)
{
    const QByteArray &folder = plan().folder;
    return path != nullptr
        && std::strncmp(path, folder.constData(), static_cast<std::size_t>(folder.size())) == 0;
}

bool fails(FileFaults::Calls call, const char *path)
{
    Plan &current = plan();
    if (!current.isOn || (current.calls & call) == 0 || !isBelow(path)) {
        return false;
    }
    const int number = current.seen++;
    const bool now = current.span == FileFaults::Span::Once ? number == current.number
                                                            : number >= current.number;
    if (now) {
        ++current.hits;
        errno = current.error;
    }
    return now;
}

bool fails(FileFaults::Calls call, int file)
{
    if (!plan().isOn) {
        return false;
    }
    std::array<char, PATH_MAX> path{};
    std::array<char, 32> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", file);
    return readlink(link.data(), path.data(), path.size() - 1) > 0 && fails(call, path.data());
}

template <class Function> Function *original(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

using OpenFunction = int(const char *, int, ...);

int openOr(const char *name, const char *path, int flags, mode_t mode)
{
    if (fails(FileFaults::Opens, path)) {
        return -1;
    }
    return original<OpenFunction>(name)(path, flags, mode);
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
    return openOr("open", path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openOr("open64", path, flags, mode);
}

ssize_t read(int file, void *bytes, size_t count)
{
    static auto *kReal = original<decltype(read)>("read");
    if (fails(FileFaults::Reads, file)) {
        return plan().error != 0 ? -1 : kReal(file, bytes, count / 2);
    }
    return kReal(file, bytes, count);
}

ssize_t write(int file, const void *bytes, size_t count)
{
    static auto *kReal = original<decltype(write)>("write");
    if (fails(FileFaults::Writes, file)) {
        return plan().error != 0 ? -1 : kReal(file, bytes, count / 2);
    }
    return kReal(file, bytes, count);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    static auto *kReal = original<int(const char *, mode_t)>("mkdir");
    return fails(FileFaults::Mkdirs, path) ? -1 : kReal(path, mode);
}

int unlink(const char *path) noexcept
{
    static auto *kReal = original<int(const char *)>("unlink");
    return fails(FileFaults::Unlinks, path) ? -1 : kReal(path);
}
}

FileFaults::FileFaults(const QString &folder, unsigned calls, int number, int error, Span span)
{
    plan() = {true, QFile::encodeName(folder), calls, number, error, span, 0, 0};
}

FileFaults::~FileFaults()
{
    plan().isOn = false;
}

int FileFaults::hits()
{
    return plan().hits;
}
