// SPDX-License-Identifier: MIT
// Which characters a field lets in. Most Exif texts are single bytes in the file, so most
// fields take nothing else.
#pragma once

class QString;

namespace lumi {

/// Takes everything.
inline constexpr int kAnyCharacters = 0xFF;
/// Takes the single-byte letters, digits and signs from blank to tilde.
inline constexpr int kPlainCharacters = 0xE2;

/// The text without the characters that the mask has no bit for. Each bit of the mask allows
/// a class of characters; 0x80 stands for none.
[[nodiscard]] QString filterCharacters(const QString &text, int mask);

} // namespace lumi
