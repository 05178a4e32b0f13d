// SPDX-License-Identifier: MIT
// The message catalogue: every text of menus, buttons, labels and messages, by number.
// The rows are bytes in UTF-8. A catalogue in another language differs in its rows only.
// The table is constant, so texts can be used before main and in any order of initialisation.
#pragma once

#include "app/common/messageIds.h"

#include <QString>

/// The text of one row (0 to 280), a fresh string on each call. Any other number is a
/// programming error: it stops a debug build and is a null string otherwise.
[[nodiscard]] QString msg(int id);

namespace lumi {

/// The bytes of a row, never freed; null for a number outside the table.
[[nodiscard]] const char *messageBytes(int id);

} // namespace lumi
