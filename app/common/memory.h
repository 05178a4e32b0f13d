// SPDX-License-Identifier: MIT
// How much memory a large allocation may count on.
#pragma once

#include <QByteArray>

/// KB to count on, after 2 MB are kept back for the rest of the system; never negative, 0 if
/// the kernel's figures can't be read.
[[nodiscard]] int freeMemoryKB();

namespace lumi {

/// The same out of the kernel's memory figures in their table form: a heading, then a line of
/// a label and, in bytes, total, used, free, shared, buffers and cached. A missing figure is 0.
[[nodiscard]] int memoryToCountOnKB(const QByteArray &figures);

} // namespace lumi
