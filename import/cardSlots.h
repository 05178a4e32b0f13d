// SPDX-License-Identifier: MIT
// Which slot a card's path belongs to, and whether there is a card in it.
#pragma once

#include "platform/Machine.h"

#include <QString>

#include <optional>

namespace lumi {

/// None for a path that is no slot's mount point.
[[nodiscard]] std::optional<Slot> cardSlotOf(const QString &path);

/// True unless path is the mount point of an empty slot.
[[nodiscard]] bool isSourcePresent(const QString &path);

/// What the user calls the place at path.
[[nodiscard]] QString sourceName(const QString &path);

} // namespace lumi
