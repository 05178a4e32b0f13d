// SPDX-License-Identifier: MIT
// The words for tags whose values are choices from a list.
#pragma once

#include <QString>

#include <optional>

namespace lumi {

/// A message of the catalogue, or a text that is the same in every language.
struct ValueWord
{
    int message = -1;
    const char *text = nullptr; // if there is no message
};

/// The word for a value of tag; empty if the value has none. Words of two tags can be the same in
/// one language only, so each tag has its own messages. Nothing if the tag is no choice.
[[nodiscard]] std::optional<ValueWord> wordForValue(int tag, int value);

/// The same as a text; a null string if the value has none.
[[nodiscard]] std::optional<QString> valueWord(int tag, int value);

} // namespace lumi
