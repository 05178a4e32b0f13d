// SPDX-License-Identifier: MIT
// Carries channel messages between processes as signals on the session bus. Does nothing without a
// bus. Every program on the user's bus can send; the program never uses the data of such a message.
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
