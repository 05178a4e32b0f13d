// SPDX-License-Identifier: MIT
// The program reads memory figures as a table in bytes, as old kernels wrote it. Current kernels
// write one line in KB for each figure; this converts them.
#pragma once

#include <QByteArray>

namespace lumi {

/// A text that has the table comes back as it is; otherwise a table is made of the lines
/// "MemTotal:", "MemFree:", "Buffers:" and "Cached:", missing ones being 0.
[[nodiscard]] QByteArray memoryTable(const QByteArray &text);

} // namespace lumi
