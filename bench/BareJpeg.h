// SPDX-License-Identifier: MIT
// The bare reference of the decoding budgets: libjpeg alone with one line in memory. It reads
// through the same 8132-byte buffer as the program, with the same transform and scale.
#pragma once

#include <QByteArray>
#include <QSize>

namespace lumi::bench {

/// Decodes the whole file at 1 / `denominator` and throws the lines away.
/// \return the decoded size; (0, 0) if the file cannot be opened
QSize bareDecode(const QByteArray &path, unsigned denominator);

} // namespace lumi::bench
