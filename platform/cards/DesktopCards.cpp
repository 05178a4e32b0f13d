// SPDX-License-Identifier: MIT
#include "platform/cards/DesktopCards.h"

#include "platform/cards/CardSlots.h"
#include "platform/session/sessionBus.h"

#include <QDBusConnection>
#include <QDir>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>

namespace {

/// The desktop's own automounter comes first.
constexpr int kDesktopMountsMs = 500;
/// GVfs announces a mount to us and to the process that shows it as a folder. The folder appears a
/// moment later, and much later on a busy device.
constexpr int kFolderAppearsMs[] = {200, 1500};

QList<Slot> slotsOfDesktop()
{
    QList<Slot> found;
    for (const Slot slot : lumi::CardSlots::kAll) {
        const QString link = lumi::SlotLinks::path(slot);
        if (!link.isEmpty() && lumi::CardSlots::mountPoint(slot) == link) {
            found.append(slot);
        }
    }
    return found;
}

/// Cameras and phones that the desktop has mounted.
QList<lumi::CardSource> deviceMounts()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
                      + QLatin1String("/gvfs"));
    const QStringList names = folder.entryList(
        {QStringLiteral("mtp:host=*"), QStringLiteral("gphoto2:host=*")}, QDir::Dirs);
    QList<lumi::CardSource> sources;
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        sources.append({path, std::nullopt, {path}});
    }
    return sources;
}

QList<lumi::CardSource> mountedDrives(const QList<lumi::RemovableDrive> &drives)
{
    QList<lumi::CardSource> sources;
    for (const lumi::RemovableDrive &drive : drives) {
        // A slot with a mount point of its own keeps what is mounted there.
        if (!drive.folders.isEmpty()
            && !lumi::CardSlots::slotOf(drive.folders.constFirst()).has_value()) {
            sources.append({drive.path, drive.kind, drive.folders});
        }
    }
    return sources;
}

} // namespace

lumi::DesktopCards::DesktopCards(QObject *parent)
    : QObject(parent)
    , m_slots(slotsOfDesktop())
{
    if (m_slots.isEmpty()) {
        return;
    }
    m_links = std::make_unique<SlotLinks>();
    m_disks = std::make_unique<DiskService>();
    connect(m_disks.get(), &DiskService::changed, this, &DesktopCards::update);
    if (hasSessionBus()) {
        for (const char *signal : {"Mounted", "Unmounted"}) {
            QDBusConnection::sessionBus().connect(
                QString(), QStringLiteral("/org/gtk/vfs/mounttracker"),
                QStringLiteral("org.gtk.vfs.MountTracker"), QLatin1String(signal), this,
                SLOT(deviceMountsChanged()));
        }
    }
    update();
}

void lumi::DesktopCards::deviceMountsChanged()
{
    for (const int delay : kFolderAppearsMs) {
        QTimer::singleShot(delay, this, &DesktopCards::update);
    }
}

void lumi::DesktopCards::update()
{
    const QList<RemovableDrive> drives = removableDrives(m_disks->objects());
    m_holders = fillSlots(m_slots, m_holders, mountedDrives(drives) + deviceMounts());
    for (const Slot slot : std::as_const(m_slots)) {
        m_links->lead(slot, m_holders.value(slot).folder);
    }
    mountNew(drives);
}

void lumi::DesktopCards::mountNew(const QList<RemovableDrive> &drives)
{
    QSet<QString> now;
    for (const RemovableDrive &drive : drives) {
        const QString name = drive.path;
        now.insert(name);
        if (drive.folders.isEmpty() && !m_drives.contains(name)) {
            mountLater(name);
        }
    }
    m_drives = now;
}

void lumi::DesktopCards::mountLater(const QString &name)
{
    QTimer::singleShot(kDesktopMountsMs, this, [this, name] {
        mountIfUnused(name);
    });
}

void lumi::DesktopCards::mountIfUnused(const QString &name)
{
    const QList<RemovableDrive> drives = removableDrives(m_disks->objects());
    const auto drive = std::find_if(drives.begin(), drives.end(), [&name](const auto &each) {
        return each.path == name;
    });
    const bool isUnused
        = drive != drives.end() && drive->folders.isEmpty() && !drive->unmounted.isEmpty();
    if (isUnused && m_holders.size() < m_slots.size()) {
        m_disks->mount(drive->unmounted);
    }
}
