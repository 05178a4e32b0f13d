// SPDX-License-Identifier: MIT
// What a camera says about its flash, packed into bits.
#pragma once

#include "app/common/messageIds.h"

#include <QString>

#include <vector>

namespace lumi {

/// The catalogue's rows for what the bits say, in the order of the lines. Two of them have the
/// same text in some languages and not in others: a flash that did not fire, and none at all.
[[nodiscard]] std::vector<MessageId> flashMessages(int bits);

/// A line for each thing that the bits say, with line feeds between them.
[[nodiscard]] QString flashText(int bits);

} // namespace lumi
