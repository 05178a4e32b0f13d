// SPDX-License-Identifier: MIT
// The memory that is available for a large allocation.
#pragma once

#include <QByteArray>

/// Available KB, less 2 MB for the rest of the system. Never negative; 0 if the kernel's figures
/// can't be read.
[[nodiscard]] int freeMemoryKB();

namespace lumi {

/// The same from the kernel's memory figures as a table: a heading, then a line with a label and,
/// in bytes, total, used, free, shared, buffers and cached. A missing figure is 0.
[[nodiscard]] int memoryToCountOnKB(const QByteArray &figures);

} // namespace lumi
