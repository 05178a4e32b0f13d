// SPDX-License-Identifier: MIT
#include "import/cardSlots.h"

#include "app/common/messages.h"

#include <QFile>

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

bool lumi::isCardInSlot(Slot slot)
{
    return !QFile::exists(Machine::instance().mountPoint(slot) + QLatin1String("/NotAvailable"));
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
