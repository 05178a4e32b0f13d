// SPDX-License-Identifier: MIT
// The flash tag: a set of bits, shown as lines of text.
#pragma once

#include "app/common/messageIds.h"

#include <QString>

#include <vector>

namespace lumi {

/// The messages for the bits, in the order of the lines. Two of them have the same text in some
/// languages only: a flash that did not fire, and no flash at all.
[[nodiscard]] std::vector<MessageId> flashMessages(int bits);

/// The texts of flashMessages(), separated by line feeds.
[[nodiscard]] QString flashText(int bits);

} // namespace lumi
