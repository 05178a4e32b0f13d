// SPDX-License-Identifier: MIT
// Cards that go while somebody works on them. When a card is unmounted its folder stays: an
// empty one of the device's own disk, which must not get what was meant for the card, because
// the next card hides it.
#pragma once

#include "platform/Machine.h"

#include <QString>

#include <optional>

#include <sys/types.h>

namespace lumi {

/// Whether the marker of an empty slot is missing from its mount point.
[[nodiscard]] bool isCardInSlot(Slot slot);

/// Misses the cards of the slots that are empty now. To be called at all news of cards: a card
/// that has gone is missed then, though it or another one may be in before anybody asks.
void noteEmptySlots();

/// The card or other file system that a folder is on, as it was when this was made.
class Medium
{
public:
    /// Of no folder, and never gone.
    Medium() = default;
    explicit Medium(const QString &folder);

    /// False once the folder is on another file system or is gone, or its card was missed, and
    /// while it lies on a card that is not in its slot. A folder that was never there counts as
    /// there: it fails by itself.
    [[nodiscard]] bool isThere() const;

private:
    [[nodiscard]] std::optional<dev_t> device() const;

    QString m_folder;
    std::optional<dev_t> m_device;
    unsigned m_timesMissed = 0;
};

} // namespace lumi
