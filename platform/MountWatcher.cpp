// SPDX-License-Identifier: MIT
#include "platform/MountWatcher.h"

#include "platform/Machine.h"
#include "platform/QCopHub.h"

#include <QFileInfo>
#include <QSocketNotifier>

#include <algorithm>

namespace {

/// Mounts come in bursts of a few milliseconds.
constexpr int kSettleMs = 50;
/// Place of the mount point among the fields of a line.
constexpr int kMountPointField = 4;
constexpr int kOctalDigits = 3;
constexpr int kOctal = 8;

/// The mount table writes blanks and the like as "\040".
QByteArray unescaped(const QByteArray &field)
{
    QByteArray text;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool isOctal = false;
        const uint code = field.mid(i + 1, kOctalDigits).toUInt(&isOctal, kOctal);
        if (field.at(i) == '\\' && isOctal) {
            text += static_cast<char>(code);
            i += kOctalDigits;
        } else {
            text += field.at(i);
        }
    }
    return text;
}

bool holds(const QByteArray &mountPoint, const QByteArray &folder)
{
    return mountPoint == "/" || folder == mountPoint
        || folder.startsWith(QByteArray(mountPoint + '/'));
}

/// Empty for the root and for an empty path.
QString parentOf(const QString &path)
{
    const QString parent = path.isEmpty() ? QString() : QFileInfo(path).path();
    return parent != path ? parent : QString();
}

/// The folder, or what exists of the way to it.
QString nearestFolder(QString path)
{
    while (!path.isEmpty() && !QFileInfo::exists(path)) {
        path = parentOf(path);
    }
    return path;
}

} // namespace

lumi::MountWatcher::MountWatcher(QObject *parent)
    : QObject(parent)
{
    for (const Slot slot : {Slot::CF, Slot::SD}) {
        m_mountPoints.append(Machine::instance().configuredMountPoint(slot));
    }
    m_settle.setSingleShot(true);
    m_settle.setInterval(kSettleMs);
    connect(&m_settle, &QTimer::timeout, this, &MountWatcher::look);
    connect(&m_folders, &QFileSystemWatcher::directoryChanged, this, &MountWatcher::startLook);
    m_table.setFileName(Machine::instance().mountTable());
    if (!m_table.fileName().isEmpty() && m_table.open(QIODevice::ReadOnly)) {
        auto *notifier = new QSocketNotifier(m_table.handle(), QSocketNotifier::Exception, this);
        connect(notifier, &QSocketNotifier::activated, this, &MountWatcher::startLook);
    }
    watchFolders();
    m_state = state();
}

QByteArrayList lumi::MountWatcher::relevantMounts(const QByteArray &table,
                                                  const QStringList &folders)
{
    QByteArrayList relevant;
    const QByteArrayList lines = table.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray mountPoint = unescaped(line.split(' ').value(kMountPointField));
        const bool matters = !mountPoint.isEmpty()
            && std::any_of(folders.begin(), folders.end(), [&mountPoint](const QString &folder) {
                   return holds(mountPoint, QFile::encodeName(folder));
               });
        if (matters) {
            relevant.append(line);
        }
    }
    return relevant;
}

void lumi::MountWatcher::startLook()
{
    // Not restarted: an endless burst must not keep the news back for ever.
    if (!m_settle.isActive()) {
        m_settle.start();
    }
}

void lumi::MountWatcher::look()
{
    // Under the old name there may be another folder now, which nobody watches yet.
    watchFolders();
    const QByteArray now = state();
    if (now == m_state) {
        return;
    }
    m_state = now;
    if (QCopHub *hub = QCopHub::instance()) {
        hub->post("QPE/Card", "mtabChanged()");
    }
}

void lumi::MountWatcher::watchFolders()
{
    const QStringList watched = m_folders.directories();
    if (!watched.isEmpty()) {
        m_folders.removePaths(watched);
    }
    QStringList folders;
    for (const QString &mountPoint : std::as_const(m_mountPoints)) {
        // The parent tells when the folder is renamed, or a link there leads elsewhere.
        folders << nearestFolder(mountPoint) << nearestFolder(parentOf(mountPoint));
    }
    folders.removeAll(QString());
    folders.removeDuplicates();
    if (!folders.isEmpty()) {
        m_folders.addPaths(folders);
    }
}

QByteArray lumi::MountWatcher::state() const
{
    QFile table(m_table.fileName());
    QByteArray text;
    if (m_table.isOpen() && table.open(QIODevice::ReadOnly)) {
        text = relevantMounts(table.readAll(), m_mountPoints).join('\n');
    }
    for (const QString &mountPoint : m_mountPoints) {
        text += QFileInfo::exists(mountPoint) ? "\nfolder" : "\nnone";
        text += QFileInfo::exists(mountPoint + QLatin1String("/NotAvailable")) ? " empty" : " card";
    }
    return text;
}
