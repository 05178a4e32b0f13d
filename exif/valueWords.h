// SPDX-License-Identifier: MIT
// The words for tags whose numbers are a choice out of a list.
#pragma once

#include <QString>

#include <optional>

namespace lumi {

/// The word for value under tag, a null string for a value that has none. Nothing when the tag
/// is no choice.
[[nodiscard]] std::optional<QString> valueWord(int tag, int value);

} // namespace lumi
