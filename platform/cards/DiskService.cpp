// SPDX-License-Identifier: MIT
#include "platform/cards/DiskService.h"

#include <QDBusPendingCallWatcher>

namespace {

constexpr QLatin1String kService("org.freedesktop.UDisks2");
constexpr QLatin1String kRoot("/org/freedesktop/UDisks2");
constexpr QLatin1String kManager("org.freedesktop.DBus.ObjectManager");
constexpr QLatin1String kProperties("org.freedesktop.DBus.Properties");

} // namespace

lumi::DiskService::DiskService(QObject *parent)
    : QObject(parent)
    , m_bus(QDBusConnection::systemBus())
{
    if (m_bus.isConnected()) {
        m_watcher.setConnection(m_bus);
        m_watcher.addWatchedService(kService);
        connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &DiskService::find);
        find();
    }
}

void lumi::DiskService::call(const QString &interface, const QString &method,
                             void (DiskService::*handler)(const QDBusMessage &))
{
    const QDBusMessage question
        = QDBusMessage::createMethodCall(kService, kRoot, interface, method);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, handler] {
        watcher->deleteLater();
        if (!watcher->isError()) {
            (this->*handler)(watcher->reply());
        }
    });
}

void lumi::DiskService::find()
{
    // The bus starts the service for this call if necessary.
    call(QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"), &DiskService::follow);
}

void lumi::DiskService::follow(const QDBusMessage &answer)
{
    if (answer.service() != m_owner) {
        m_owner = answer.service();
        listen();
    }
    call(kManager, QStringLiteral("GetManagedObjects"), &DiskService::readAll);
}

void lumi::DiskService::listen()
{
    // QtDBus would wait for an answer if the sender were named by kService. The unique name of an
    // earlier owner is never used again, so its signals need no disconnection.
    m_bus.connect(m_owner, kRoot, kManager, QStringLiteral("InterfacesAdded"), this,
                  SLOT(interfacesAdded(QDBusMessage)));
    m_bus.connect(m_owner, kRoot, kManager, QStringLiteral("InterfacesRemoved"), this,
                  SLOT(interfacesRemoved(QDBusMessage)));
    m_bus.connect(m_owner, QString(), kProperties, QStringLiteral("PropertiesChanged"), this,
                  SLOT(propertiesChanged(QDBusMessage)));
}

void lumi::DiskService::readAll(const QDBusMessage &answer)
{
    if (answer.service() == m_owner && !answer.arguments().isEmpty()) {
        m_objects = qdbus_cast<DiskObjects>(answer.arguments().constFirst());
        Q_EMIT changed();
    }
}

void lumi::DiskService::interfacesAdded(const QDBusMessage &message)
{
    const QList<QVariant> arguments = message.arguments();
    const auto path = qdbus_cast<QDBusObjectPath>(arguments.value(0));
    m_objects[path].insert(qdbus_cast<DiskInterfaces>(arguments.value(1)));
    Q_EMIT changed();
}

void lumi::DiskService::interfacesRemoved(const QDBusMessage &message)
{
    const QList<QVariant> arguments = message.arguments();
    const auto path = qdbus_cast<QDBusObjectPath>(arguments.value(0));
    const QStringList removed = arguments.value(1).toStringList();
    for (const QString &interface : removed) {
        m_objects[path].remove(interface);
    }
    if (m_objects.value(path).isEmpty()) {
        m_objects.remove(path);
    }
    Q_EMIT changed();
}

void lumi::DiskService::propertiesChanged(const QDBusMessage &message)
{
    const QString interface = message.arguments().value(0).toString();
    const auto object = m_objects.find(QDBusObjectPath(message.path()));
    if (object != m_objects.end() && object->contains(interface)) {
        (*object)[interface].insert(qdbus_cast<QVariantMap>(message.arguments().value(1)));
        Q_EMIT changed();
    }
}

void lumi::DiskService::mount(const QString &blockDevice)
{
    QDBusMessage request = QDBusMessage::createMethodCall(
        kService, blockDevice, QStringLiteral("org.freedesktop.UDisks2.Filesystem"),
        QStringLiteral("Mount"));
    request << QVariantMap{{QStringLiteral("auth.no_user_interaction"), true}};
    m_bus.asyncCall(request);
}
