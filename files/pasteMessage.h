// SPDX-License-Identifier: MIT
// What the user is told when a paste has failed.
#pragma once

#include "app/common/messageIds.h"
#include "files/engine/PasteResult.h"

namespace lumi {

/// Of any result but Done, which has no message.
[[nodiscard]] MessageId pasteMessage(PasteResult result);

} // namespace lumi
