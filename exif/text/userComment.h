// SPDX-License-Identifier: MIT
// The comment of a photo, which names its own encoding.
// Format: eight bytes of mark, then the text, which ends at its first NUL or with the value.
// Behind "UNICODE" it is UTF-8: that is how this program writes it. Behind "ASCII" each byte is
// one Latin-1 character. Behind any other mark the encoding is guessed.
#pragma once

#include <QByteArray>
#include <QString>

namespace lumi {

/// The text of a whole value. Empty when it is too short for a mark and when the encoding
/// cannot be guessed.
[[nodiscard]] QString userCommentText(const QByteArray &value);

} // namespace lumi
