// SPDX-License-Identifier: MIT
// The characters that a field accepts. Most Exif texts are stored as single bytes, so most fields
// accept only those.
#pragma once

class QString;

namespace lumi {

/// All characters.
inline constexpr int kAnyCharacters = 0xFF;
/// The ASCII characters from blank to tilde.
inline constexpr int kPlainCharacters = 0xE2;

/// Removes the characters that mask has no bit for. Each bit of mask allows a class of characters;
/// 0x80 has no class.
[[nodiscard]] QString filterCharacters(const QString &text, int mask);

} // namespace lumi
