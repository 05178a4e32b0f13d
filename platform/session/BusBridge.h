// SPDX-License-Identifier: MIT
// Carries channel messages between processes as signals on the session bus. Without a bus it
// does nothing, silently. Whoever is on the user's bus may send; no message carries data that
// is acted on.
// Format: signal org.lumivault.QCop.Message(s channel, s message, ay data) of the object
// /org/lumivault/QCop; the data may be left out.
#pragma once

#include <QByteArray>
#include <QObject>

class QDBusMessage;

namespace lumi {

class BusBridge : public QObject
{
    Q_OBJECT

public:
    explicit BusBridge(QObject *parent);

    void send(const QByteArray &channel, const QByteArray &message, const QByteArray &data);

Q_SIGNALS:
    /// Another process sent a message.
    void received(const QByteArray &channel, const QByteArray &message, const QByteArray &data);

private Q_SLOTS:
    void receive(const QDBusMessage &message);
};

} // namespace lumi
