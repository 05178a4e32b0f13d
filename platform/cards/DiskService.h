// SPDX-License-Identifier: MIT
// A copy of the objects of the disk service UDisks2 on the system bus, kept up to date. All calls are
// asynchronous. Mounts outlast the service, so the objects are kept while it restarts.
#pragma once

#include "platform/cards/diskObjects.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

namespace lumi {

class DiskService : public QObject
{
    Q_OBJECT

public:
    explicit DiskService(QObject *parent = nullptr);

    [[nodiscard]] const DiskObjects &objects() const { return m_objects; }

    /// Asks the service to mount a block device. It never asks the user for a password. If it
    /// refuses, nothing happens.
    void mount(const QString &blockDevice);

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void interfacesAdded(const QDBusMessage &message);
    void interfacesRemoved(const QDBusMessage &message);
    void propertiesChanged(const QDBusMessage &message);

private:
    using Handler = void (DiskService::*)(const QDBusMessage &);

    /// Calls a method of the root object. Without an answer nothing happens.
    void call(const QString &interface, const QString &method, Handler handler);
    void find();
    void follow(const QDBusMessage &answer);
    void listen();
    void readAll(const QDBusMessage &answer);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    QString m_owner; ///< the unique name of the service; empty before its first answer
    DiskObjects m_objects;
};

} // namespace lumi
