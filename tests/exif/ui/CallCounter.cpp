// SPDX-License-Identifier: MIT
#include "tests/exif/ui/CallCounter.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdarg>
#include <new>
#include <set>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

QByteArray countedPath;
int openCalls = 0;
int readCalls = 0;
bool arraysFail = false;

std::set<int> &countedFiles()
{
    static std::set<int> files;
    return files;
}

template <class Function> Function *original(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

/// In 32-bit builds open() of the decoder is open64(), too. Only Qt asks for large files by this flag,
/// which is 0 in 64-bit builds.
bool isFromQt(int flags)
{
    return (flags & O_LARGEFILE) == O_LARGEFILE;
}

} // namespace

extern "C" {

int open64(const char *path, int flags, ...) // NOLINT(cert-dcl50-cpp): as the C library has it
{
    static auto *kReal = original<int(const char *, int, ...)>("open64");
    std::va_list arguments;
    va_start(arguments, flags);
    const bool isNew = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = isNew ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const int file = kReal(path, flags, mode);
    if (!countedPath.isEmpty()) {
        countedFiles().erase(file);
        if (countedPath == path && isFromQt(flags)) {
            ++openCalls;
            countedFiles().insert(file);
        }
    }
    return file;
}

ssize_t read(int file, void *bytes, size_t size)
{
    static auto *kReal = original<ssize_t(int, void *, size_t)>("read");
    if (!countedPath.isEmpty() && countedFiles().count(file) > 0) {
        ++readCalls;
    }
    return kReal(file, bytes, size);
}
}

void *operator new[](std::size_t size, const std::nothrow_t & /*tag*/) noexcept
{
    return arraysFail ? nullptr : ::operator new[](size);
}

namespace lumi::test {

CallCounter::CallCounter(const QString &path)
{
    countedPath = QFile::encodeName(path);
    openCalls = 0;
    readCalls = 0;
    countedFiles().clear();
}

CallCounter::~CallCounter()
{
    countedPath.clear();
}

int CallCounter::opens() const
{
    return openCalls;
}

int CallCounter::reads() const
{
    return readCalls;
}

bool isHeldOpen(const QString &path)
{
    const QDir files(QStringLiteral("/proc/self/fd"));
    const auto names = files.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
    return std::any_of(names.begin(), names.end(), [&files, &path](const QString &name) {
        return QFile::symLinkTarget(files.filePath(name)) == path;
    });
}

NoMemory::NoMemory()
{
    arraysFail = true;
}

NoMemory::~NoMemory()
{
    arraysFail = false;
}

} // namespace lumi::test
