// SPDX-License-Identifier: MIT
// How often a file is opened and read by the toolkit, and memory that cannot be had: this
// program's own versions of these calls stand before those of the libraries. And whether a
// file is open still.
#pragma once

#include <QString>

namespace lumi::test {

/// Counts from its making to its end. One at a time.
class CallCounter
{
public:
    explicit CallCounter(const QString &path);
    ~CallCounter();
    CallCounter(const CallCounter &) = delete;
    CallCounter &operator=(const CallCounter &) = delete;

    [[nodiscard]] int opens() const;
    /// Of what was opened since the counter was made.
    [[nodiscard]] int reads() const;
};

/// Whether this process holds the file open.
[[nodiscard]] bool isHeldOpen(const QString &path);

/// While it lives, arrays that are asked for without exceptions cannot be had.
class NoMemory
{
public:
    NoMemory();
    ~NoMemory();
    NoMemory(const NoMemory &) = delete;
    NoMemory &operator=(const NoMemory &) = delete;
};

} // namespace lumi::test
