// SPDX-License-Identifier: MIT
// A listener on a named channel. The event loop delivers messages, send() itself never does. They
// come from this process or, through the session bus, from other processes.
#pragma once

#include "platform/toolkit/QCString.h"

#include <QByteArray>
#include <QObject>

class QCopChannel : public QObject
{
    Q_OBJECT

public:
    /// Listens from now until it is destroyed.
    explicit QCopChannel(const QCString &channel, QObject *parent = nullptr);
    ~QCopChannel() override;

    [[nodiscard]] QCString channel() const { return m_channel; }

    /// Whether anybody in this process listens on the channel.
    [[nodiscard]] static bool isRegistered(const QCString &channel);
    /// Posts a message to every listener that exists when the event loop delivers it, here and
    /// in other processes. Always true.
    static bool send(const QCString &channel, const QCString &message, const QByteArray &data = {});

Q_SIGNALS:
    void received(const QCString &message, const QByteArray &data);

private:
    QCString m_channel;
};
