// SPDX-License-Identifier: MIT
// The program reads memory figures as a table in bytes, as old kernels wrote it. Current kernels
// write one line in KB for each figure; this converts them.
#pragma once

#include <QByteArray>

namespace lumi {

/// Returns a text that has the table unchanged. Otherwise makes a table from the lines "MemTotal:",
/// "MemFree:", "Buffers:" and "Cached:". A missing line counts as 0.
[[nodiscard]] QByteArray memoryTable(const QByteArray &text);

} // namespace lumi
