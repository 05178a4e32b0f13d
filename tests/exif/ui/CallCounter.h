// SPDX-License-Identifier: MIT
// Counts how often the toolkit opens and reads a file, and lets allocations fail. The test program
// defines these calls itself, before those of the libraries.
#pragma once

#include <QString>

namespace lumi::test {

/// Counts while it lives. Only one at a time.
class CallCounter
{
public:
    explicit CallCounter(const QString &path);
    ~CallCounter();
    CallCounter(const CallCounter &) = delete;
    CallCounter &operator=(const CallCounter &) = delete;

    [[nodiscard]] int opens() const;
    /// Only of files that were opened while it lives.
    [[nodiscard]] int reads() const;
};

/// Whether this process holds the file open.
[[nodiscard]] bool isHeldOpen(const QString &path);

/// While it lives, new(std::nothrow) fails for arrays.
class NoMemory
{
public:
    NoMemory();
    ~NoMemory();
    NoMemory(const NoMemory &) = delete;
    NoMemory &operator=(const NoMemory &) = delete;
};

} // namespace lumi::test
