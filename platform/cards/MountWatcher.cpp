// SPDX-License-Identifier: MIT
#include "platform/cards/MountWatcher.h"

#include "platform/cards/CardSlots.h"
#include "platform/session/QCopHub.h"

#include <QFileInfo>
#include <QSocketNotifier>

namespace {

/// Mounts come in bursts of a few milliseconds.
constexpr int kSettleMs = 50;

/// Empty for the root and for an empty path.
QString parentOf(const QString &path)
{
    const QString parent = path.isEmpty() ? QString() : QFileInfo(path).path();
    return parent != path ? parent : QString();
}

/// The folder, or the nearest folder above it that exists.
QString nearestFolder(QString path)
{
    while (!path.isEmpty() && !QFileInfo::exists(path)) {
        path = parentOf(path);
    }
    return path;
}

QStringList mountPoints()
{
    return {lumi::CardSlots::mountPoint(Slot::CF), lumi::CardSlots::mountPoint(Slot::SD)};
}

QList<unsigned> generations()
{
    return {lumi::CardSlots::generation(Slot::CF), lumi::CardSlots::generation(Slot::SD)};
}

} // namespace

lumi::MountWatcher::MountWatcher(QObject *parent)
    : QObject(parent)
    , m_mountPoints(mountPoints())
    , m_table(openRegular(Machine::instance().mountTable()))
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(kSettleMs);
    connect(&m_settle, &QTimer::timeout, this, &MountWatcher::look);
    connect(&m_folders, &QFileSystemWatcher::directoryChanged, this, &MountWatcher::startLook);
    if (m_table.isOpen()) {
        auto *notifier = new QSocketNotifier(m_table.get(), QSocketNotifier::Exception, this);
        connect(notifier, &QSocketNotifier::activated, this, &MountWatcher::startLook);
    }
    watchFolders();
    m_told = generations();
}

void lumi::MountWatcher::startLook()
{
    // The slots are checked at once, because the next card may be in before the burst is over.
    CardSlots::look();
    // Not restarted, because an endless burst would delay the message for ever.
    if (!m_settle.isActive()) {
        m_settle.start();
    }
}

void lumi::MountWatcher::look()
{
    // The name may belong to a new folder now, which is not watched yet.
    watchFolders();
    const QList<unsigned> now = generations();
    // Tests install another machine; its slots are not the ones watched here.
    if (now == m_told || mountPoints() != m_mountPoints) {
        return;
    }
    m_told = now;
    QCopHub::instance()->post("QPE/Card", "mtabChanged()");
}

void lumi::MountWatcher::watchFolders()
{
    const QStringList watched = m_folders.directories();
    if (!watched.isEmpty()) {
        m_folders.removePaths(watched);
    }
    QStringList folders;
    for (const QString &mountPoint : std::as_const(m_mountPoints)) {
        // The parent reports a renamed folder or a changed link.
        folders << nearestFolder(mountPoint) << nearestFolder(parentOf(mountPoint));
    }
    folders.removeAll(QString());
    folders.removeDuplicates();
    if (!folders.isEmpty()) {
        m_folders.addPaths(folders);
    }
}
