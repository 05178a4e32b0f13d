// SPDX-License-Identifier: MIT
// A stand-in for the disk service UDisks2, on a bus connection of its own: drives and block devices
// that a test inserts, mounts and removes. It sends the same signals as the service.
#pragma once

#include "platform/cards/diskObjects.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace lumi {

QDBusArgument &operator<<(QDBusArgument &argument, const DiskConfiguration &entry);

} // namespace lumi

namespace lumi::test {

class DiskDouble : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit DiskDouble(const QDBusConnection &bus);
    ~DiskDouble() override;

    /// Appears on the bus, or leaves it.
    void appear();
    void vanish();

    /// Adds the object of a drive.
    void addDrive(const QString &name, const QVariantMap &properties);
    /// Adds a block device without a file system.
    void addDevice(const QString &name, const QString &drive, const QVariantMap &properties = {});
    /// Adds a block device with a file system that is mounted in these folders.
    void addFileSystem(const QString &name, const QString &drive, const QStringList &folders,
                       const QVariantMap &properties = {});
    /// Adds an SD card in a drive of its own. Its only device has the same name.
    void addSdCard(const QString &name, const QStringList &folders);
    void setFolders(const QString &device, const QStringList &folders);
    void setProperty(const QString &device, const QString &name, const QVariant &value);
    /// Takes a drive and the device of the same name out, without an unmount.
    void remove(const QString &name);

    [[nodiscard]] static QString devicePath(const QString &name);

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &path) const override;

    QList<QDBusMessage> mountCalls;
    QString mountFolder;   ///< where the next device is mounted on request; empty: it is refused
    bool isSilent = false; ///< does not answer

private:
    void add(const QString &path, const DiskInterfaces &interfaces);
    void change(const QString &device, const QString &interface, const QVariantMap &values);
    void sendFromRoot(const QString &signal, const QVariantList &arguments);
    QDBusMessage mounted(const QDBusMessage &request);

    QDBusConnection m_bus;
    DiskObjects m_objects;
};

} // namespace lumi::test
