// SPDX-License-Identifier: MIT
// The comment of a photo, which names its own encoding.
// Format: eight bytes with the name of the encoding, then the text up to its first NUL. "UNICODE"
// is read as UTF-8, as this program writes it, and "ASCII" as Latin-1. For any other name the
// encoding is guessed.
#pragma once

#include <QByteArray>
#include <QString>

namespace lumi {

/// The text in a value. Empty if the value is below eight bytes or its encoding cannot be guessed.
[[nodiscard]] QString userCommentText(const QByteArray &value);

} // namespace lumi
