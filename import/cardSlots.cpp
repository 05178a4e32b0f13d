// SPDX-License-Identifier: MIT
#include "import/cardSlots.h"

#include "app/common/Medium.h"
#include "app/common/messages.h"

std::optional<Slot> lumi::cardSlotOf(const QString &path)
{
    const Machine &machine = Machine::instance();
    for (const Slot slot : {Slot::CF, Slot::SD}) {
        // A mount point that has gone is served by a stand-in, and is still this slot's path.
        if (path == machine.configuredMountPoint(slot) || path == machine.mountPoint(slot)) {
            return slot;
        }
    }
    return std::nullopt;
}

bool lumi::isSourcePresent(const QString &path)
{
    const std::optional<Slot> slot = cardSlotOf(path);
    return !slot || isCardInSlot(*slot);
}

QString lumi::sourceName(const QString &path)
{
    const std::optional<Slot> slot = cardSlotOf(path);
    if (!slot) {
        return msg(MsgPhotoFiles);
    }
    return msg(*slot == Slot::CF ? MsgCfCard : MsgSdCard);
}
