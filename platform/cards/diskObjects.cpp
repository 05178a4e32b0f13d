// SPDX-License-Identifier: MIT
#include "platform/cards/diskObjects.h"

#include <QByteArrayList>
#include <QFile>

#include <algorithm>

namespace {

constexpr QLatin1String kDrive("org.freedesktop.UDisks2.Drive");
constexpr QLatin1String kBlock("org.freedesktop.UDisks2.Block");
constexpr QLatin1String kFilesystem("org.freedesktop.UDisks2.Filesystem");

std::optional<Slot> kindOfMedia(const QString &media)
{
    if (media == QLatin1String("flash_cf")) {
        return Slot::CF;
    }
    return media.startsWith(QLatin1String("flash_sd")) ? std::optional(Slot::SD) : std::nullopt;
}

/// The kind of the inserted medium. If that is unknown, the first known kind that the drive takes.
std::optional<Slot> kindOf(const QVariantMap &drive)
{
    const QString media = drive.value(QStringLiteral("Media")).toString();
    const QStringList candidates = !media.isEmpty()
        ? QStringList(media)
        : drive.value(QStringLiteral("MediaCompatibility")).toStringList();
    for (const QString &candidate : candidates) {
        if (const std::optional<Slot> kind = kindOfMedia(candidate)) {
            return kind;
        }
    }
    return std::nullopt;
}

bool isRemovableUsb(const QVariantMap &drive)
{
    return drive.value(QStringLiteral("Removable")).toBool()
        && drive.value(QStringLiteral("ConnectionBus")).toString() == QLatin1String("usb");
}

QStringList mountPointsOf(const QVariantMap &fileSystem)
{
    QStringList folders;
    const auto names = qdbus_cast<QByteArrayList>(fileSystem.value(QStringLiteral("MountPoints")));
    for (const QByteArray &name : names) {
        folders.append(QFile::decodeName(name.constData())); // without the closing zero byte
    }
    return folders;
}

bool isListedInFstab(const QVariantMap &block)
{
    const auto entries
        = qdbus_cast<QList<lumi::DiskConfiguration>>(block.value(QStringLiteral("Configuration")));
    return std::any_of(entries.begin(), entries.end(), [](const lumi::DiskConfiguration &entry) {
        return entry.file == QLatin1String("fstab");
    });
}

bool isOfTheSystem(const lumi::DiskInterfaces &device)
{
    return isListedInFstab(device.value(kBlock))
        || mountPointsOf(device.value(kFilesystem)).contains(QLatin1String("/"));
}

/// False if the device has no file system for users.
bool addFileSystem(const QString &path, const lumi::DiskInterfaces &device,
                   lumi::RemovableDrive *drive)
{
    const QVariantMap block = device.value(kBlock);
    const bool isHidden = block.value(QStringLiteral("HintIgnore")).toBool()
        || block.value(QStringLiteral("HintSystem")).toBool();
    if (isHidden || !device.contains(kFilesystem)) {
        return false;
    }
    const QStringList folders = mountPointsOf(device.value(kFilesystem));
    drive->folders += folders;
    const bool isWaiting = folders.isEmpty() && block.value(QStringLiteral("HintAuto")).toBool();
    if (isWaiting && drive->unmounted.isEmpty()) {
        drive->unmounted = path;
    }
    return true;
}

/// Adds the drive's file systems; false if there are none, or if the system uses the drive.
bool addFileSystems(const lumi::DiskObjects &objects, lumi::RemovableDrive *drive)
{
    bool hasSome = false;
    for (auto it = objects.begin(); it != objects.end(); ++it) {
        const QVariant owner = it->value(kBlock).value(QStringLiteral("Drive"));
        if (owner.value<QDBusObjectPath>().path() != drive->path) {
            continue;
        }
        if (isOfTheSystem(*it)) {
            return false;
        }
        hasSome |= addFileSystem(it.key().path(), *it, drive);
    }
    return hasSome;
}

} // namespace

const QDBusArgument &lumi::operator>>(const QDBusArgument &argument, DiskConfiguration &entry)
{
    argument.beginStructure();
    argument >> entry.file >> entry.details;
    argument.endStructure();
    return argument;
}

QList<lumi::RemovableDrive> lumi::removableDrives(const DiskObjects &objects)
{
    QList<RemovableDrive> drives;
    for (auto it = objects.begin(); it != objects.end(); ++it) {
        const QVariantMap properties = it->value(kDrive);
        RemovableDrive drive{it.key().path(), kindOf(properties), {}, {}};
        const bool isCard = drive.kind.has_value() || isRemovableUsb(properties);
        if (isCard && addFileSystems(objects, &drive)) {
            drives.append(drive);
        }
    }
    return drives;
}
