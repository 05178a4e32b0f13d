// SPDX-License-Identifier: MIT
#include "platform/session/BusBridge.h"

#include "platform/session/sessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace {

constexpr QLatin1String kPath("/org/lumivault/QCop");
constexpr QLatin1String kInterface("org.lumivault.QCop");
constexpr QLatin1String kSignal("Message");

} // namespace

lumi::BusBridge::BusBridge(QObject *parent)
    : QObject(parent)
{
    if (hasSessionBus()) {
        QDBusConnection::sessionBus().connect(QString(), kPath, kInterface, kSignal, this,
                                              SLOT(receive(QDBusMessage)));
    }
}

void lumi::BusBridge::send(const QByteArray &channel, const QByteArray &message,
                           const QByteArray &data)
{
    if (!hasSessionBus()) {
        return;
    }
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kInterface, kSignal);
    signal << QString::fromUtf8(channel) << QString::fromUtf8(message) << data;
    QDBusConnection::sessionBus().send(signal);
}

void lumi::BusBridge::receive(const QDBusMessage &message)
{
    const QList<QVariant> arguments = message.arguments();
    if (message.service() == QDBusConnection::sessionBus().baseService() || arguments.size() < 2) {
        return;
    }
    const QByteArray data = arguments.size() > 2 ? arguments.at(2).toByteArray() : QByteArray();
    Q_EMIT received(arguments.at(0).toString().toUtf8(), arguments.at(1).toString().toUtf8(), data);
}
