// SPDX-License-Identifier: MIT
// The two card slots: the folder of a card, whether a card is in, and whether it is still the same
// card. No other class answers these questions.
// A slot is empty while its folder is missing or has a file "NotAvailable". A mounted card hides that
// file. A card counts as exchanged if it was seen missing in between or if its folder is another
// mount. Since Linux 6.8 mount numbers are not reused, so an exchange is noticed even if nobody looked
// in between. Each function reads the state of the slot again.
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

    /// The slot whose folder is path or contains it; none for any other path.
    [[nodiscard]] static std::optional<Slot> slotOf(const QString &path);

    /// Changes whenever a card is put in, taken out or exchanged.
    [[nodiscard]] static unsigned generation(Slot slot);

    /// Looks at both slots, so that a card that is missing now counts as taken out. MountWatcher
    /// calls it at every change of the mount table or of a slot's folder.
    static void look();
};

} // namespace lumi
