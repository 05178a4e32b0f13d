// SPDX-License-Identifier: MIT
// The words for tags whose numbers are a choice out of a list.
#pragma once

#include <QString>

#include <optional>

namespace lumi {

/// A row of the catalogue, or a text that is the same in every language.
struct ValueWord
{
    int message = -1;
    const char *text = nullptr; // the text of a word that is in no row
};

/// Which word it is; with neither a row nor a text for a value that has none. Several tags have
/// words that look the same in one language and not in another, so each has rows of its own.
/// Nothing when the tag is no choice.
[[nodiscard]] std::optional<ValueWord> wordForValue(int tag, int value);

/// The word for value under tag, a null string for a value that has none. Nothing when the tag
/// is no choice.
[[nodiscard]] std::optional<QString> valueWord(int tag, int value);

} // namespace lumi
