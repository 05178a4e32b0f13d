// SPDX-License-Identifier: MIT
// The bare reference of the decoding budgets: libjpeg alone, reading through the same
// 8132-byte window as the program, with the same transform and scale, keeping one line.
#pragma once

#include <QByteArray>
#include <QSize>

namespace lumi::bench {

/// Decodes the whole file at 1 / `denominator` and throws the lines away.
/// \return the decoded size; (0, 0) if the file cannot be opened
QSize bareDecode(const QByteArray &path, unsigned denominator);

} // namespace lumi::bench
