// SPDX-License-Identifier: MIT
// Delivers messages to the channels of this process from the event loop, in the order of sending.
// Listeners are looked up at delivery: one that was deleted in between gets nothing, one that was
// created in between gets the message once.
// Owns: the bridge to the session bus.
#pragma once

#include "platform/session/QCopChannel.h"

#include <QHash>
#include <QObject>

namespace lumi {

class BusBridge;

class QCopHub : public QObject
{
    Q_OBJECT

public:
    ~QCopHub() override;

    /// Made at first use; needs an application object.
    static QCopHub *instance();
    /// Only if it exists already.
    static QCopHub *existing();

    void add(QCopChannel *channel);
    void remove(QCopChannel *channel);
    [[nodiscard]] bool isRegistered(const QCString &channel) const;

    /// Posts a message to this process only, for events that every process notices by itself.
    void post(const QCString &channel, const QCString &message, const QByteArray &data = {});
    /// Posts a message here and to other processes.
    void send(const QCString &channel, const QCString &message, const QByteArray &data);

Q_SIGNALS:
    /// A channel got its first listener or lost its last one.
    void registrationChanged(const QByteArray &channel);
    /// A message of this process is about to be delivered to its listeners.
    void sentHere(const QByteArray &channel, const QByteArray &message, const QByteArray &data);

private:
    explicit QCopHub(QObject *parent);
    void deliver(const QCString &channel, const QCString &message, const QByteArray &data);

    QHash<QCString, QList<QCopChannel *>> m_channels;
    BusBridge *m_bridge;
};

} // namespace lumi
