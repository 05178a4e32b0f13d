// SPDX-License-Identifier: MIT
// Which card is in which slot, as a function of plain values.
#pragma once

#include "platform/Machine.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace lumi {

/// A mounted drive, camera or phone.
struct CardSource
{
    QString name;             ///< the same as long as it is plugged in
    std::optional<Slot> kind; ///< none if it fits either slot
    QStringList folders;      ///< where it is mounted; not empty
};

struct SlotHolder
{
    QString source;
    QString folder;
};

using SlotHolders = QMap<Slot, SlotHolder>;

/// A source that holds a slot keeps it, and its folder as long as that is mounted. Each other source
/// takes the slot of its kind. Those that are left take the first free slot.
/// @param all slots that may be taken
[[nodiscard]] SlotHolders fillSlots(const QList<Slot> &all, const SlotHolders &before,
                                    QList<CardSource> sources);

} // namespace lumi
