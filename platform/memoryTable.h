// SPDX-License-Identifier: MIT
// Kernels once wrote their memory figures as a table in bytes; today's write a line of KB for
// each. The program reads the table.
#pragma once

#include <QByteArray>

namespace lumi {

/// A text that has the table comes back as it is; otherwise a table is made of the lines
/// "MemTotal:", "MemFree:", "Buffers:" and "Cached:", missing ones being 0.
[[nodiscard]] QByteArray memoryTable(const QByteArray &text);

} // namespace lumi
