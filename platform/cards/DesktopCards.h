// SPDX-License-Identifier: MIT
// Fills the slots that have no mount point of their own with what the desktop mounts: memory cards
// and removable drives known to UDisks2, cameras and phones known to GVfs. If nobody mounts a drive
// soon after its insertion, or after the start of the program, its first file system is mounted
// once; a user may then unmount it.
// Owns: the links of the slots. Does nothing if every slot has a mount point.
#pragma once

#include "platform/cards/DiskService.h"
#include "platform/cards/SlotLinks.h"
#include "platform/cards/slotHolders.h"

#include <QObject>
#include <QSet>

#include <memory>

namespace lumi {

class DesktopCards : public QObject
{
    Q_OBJECT

public:
    /// Serves the machine that is installed now.
    explicit DesktopCards(QObject *parent = nullptr);

private Q_SLOTS:
    void deviceMountsChanged();

private:
    void update();
    void mountNew(const QList<RemovableDrive> &drives);
    void mountLater(const QString &name);
    void mountIfUnused(const QString &name);

    QList<Slot> m_slots; ///< those that follow the desktop
    SlotHolders m_holders;
    std::unique_ptr<SlotLinks> m_links;
    std::unique_ptr<DiskService> m_disks;
    QSet<QString> m_drives; ///< those with a file system at the last update
};

} // namespace lumi
