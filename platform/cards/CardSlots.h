// SPDX-License-Identifier: MIT
// The two card slots: where a card is read, whether one is in, and whether it is still the same
// one. Nobody else answers these questions.
// A slot is empty while the file "NotAvailable" lies in its folder; a mounted card hides it. A card
// counts as another one when it was seen missing in between, or when its folder is another mount:
// the kernel numbers mounts without reuse (since 6.8), so that an exchange is noticed even if
// nobody looked in between. Every question looks at the slot anew.
#pragma once

#include "platform/Machine.h"

#include <QString>

#include <array>
#include <optional>

namespace lumi {

class CardSlots
{
public:
    static constexpr std::array kAll{Slot::CF, Slot::SD};

    /// The folder of the slot's card, without a closing "/".
    [[nodiscard]] static QString mountPoint(Slot slot);

    [[nodiscard]] static bool isPresent(Slot slot);

    /// The slot whose folder is path or holds it; none for a path elsewhere.
    [[nodiscard]] static std::optional<Slot> slotOf(const QString &path);

    /// Changes whenever a card is put in, taken out or exchanged.
    [[nodiscard]] static unsigned generation(Slot slot);

    /// Looks at both slots, so that a card that is missing now counts as taken out. MountWatcher
    /// calls it at every change of the mount table or of a slot's folder.
    static void look();
};

} // namespace lumi
