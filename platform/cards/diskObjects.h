// SPDX-License-Identifier: MIT
// The objects of the disk service UDisks2 as plain values, and the removable drives among them.
#pragma once

#include "platform/Machine.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace lumi {

/// Properties by interface.
using DiskInterfaces = QMap<QString, QVariantMap>;
/// Interfaces by object, as GetManagedObjects of org.freedesktop.DBus.ObjectManager returns them.
using DiskObjects = QMap<QDBusObjectPath, DiskInterfaces>;

/// An entry of a block device's property Configuration: for instance "fstab" and a line of it.
struct DiskConfiguration
{
    QString file;
    QVariantMap details;
};

const QDBusArgument &operator>>(const QDBusArgument &argument, DiskConfiguration &entry);

/// A drive whose card may take a slot.
struct RemovableDrive
{
    QString path;
    std::optional<Slot> kind; ///< none for a drive that is neither a CF nor an SD card
    QString unmounted;        ///< the first block device that is to be mounted automatically
    QStringList folders;      ///< where its file systems are mounted
};

/// The SD and CF cards, and other removable USB drives, that have a file system, in the order of
/// their paths. A drive of which the system uses a part is left out: many boards run from a card.
[[nodiscard]] QList<RemovableDrive> removableDrives(const DiskObjects &objects);

} // namespace lumi

Q_DECLARE_METATYPE(lumi::DiskConfiguration)
