// SPDX-License-Identifier: MIT
#include "platform/session/QCopHub.h"

#include "platform/session/BusBridge.h"

#include <QCoreApplication>
#include <QPointer>

namespace {

QPointer<lumi::QCopHub> &theHub()
{
    static QPointer<lumi::QCopHub> hub;
    return hub;
}

} // namespace

lumi::QCopHub::QCopHub(QObject *parent)
    : QObject(parent)
    , m_bridge(new BusBridge(this))
{
    connect(m_bridge, &BusBridge::received, this, &QCopHub::post);
}

lumi::QCopHub::~QCopHub() = default;

lumi::QCopHub *lumi::QCopHub::instance()
{
    if (theHub().isNull()) {
        theHub() = new QCopHub(QCoreApplication::instance());
    }
    return theHub();
}

lumi::QCopHub *lumi::QCopHub::existing()
{
    return theHub();
}

void lumi::QCopHub::add(QCopChannel *channel)
{
    QList<QCopChannel *> &listeners = m_channels[channel->channel()];
    listeners.append(channel);
    if (listeners.size() == 1) {
        Q_EMIT registrationChanged(channel->channel());
    }
}

void lumi::QCopHub::remove(QCopChannel *channel)
{
    const auto listeners = m_channels.find(channel->channel());
    if (listeners == m_channels.end() || !listeners->removeOne(channel) || !listeners->isEmpty()) {
        return;
    }
    m_channels.erase(listeners);
    Q_EMIT registrationChanged(channel->channel());
}

bool lumi::QCopHub::isRegistered(const QCString &channel) const
{
    return m_channels.contains(channel);
}

void lumi::QCopHub::post(const QCString &channel, const QCString &message, const QByteArray &data)
{
    QMetaObject::invokeMethod(
        this,
        [=, this] {
            deliver(channel, message, data);
        },
        Qt::QueuedConnection);
}

void lumi::QCopHub::send(const QCString &channel, const QCString &message, const QByteArray &data)
{
    QMetaObject::invokeMethod(
        this,
        [=, this] {
            Q_EMIT sentHere(channel, message, data);
        },
        Qt::QueuedConnection);
    post(channel, message, data);
    m_bridge->send(channel, message, data);
}

void lumi::QCopHub::deliver(const QCString &channel, const QCString &message,
                            const QByteArray &data)
{
    QList<QPointer<QCopChannel>> listeners;
    const QList<QCopChannel *> present = m_channels.value(channel);
    for (QCopChannel *listener : present) {
        listeners.append(listener);
    }
    for (const QPointer<QCopChannel> &listener : std::as_const(listeners)) {
        if (listener) {
            Q_EMIT listener->received(message, data);
        }
    }
}
