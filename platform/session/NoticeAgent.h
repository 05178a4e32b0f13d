// SPDX-License-Identifier: MIT
// Shows a text as a notification of the desktop if another program is in front. Forms post texts;
// the agent hears them on the channel "LumiVault/Notice" and calls the notification service on the
// session bus. Without the service nothing happens.
#pragma once

#include "platform/session/QCopChannel.h"

#include <QObject>
#include <QString>

namespace lumi {

class NoticeAgent : public QObject
{
    Q_OBJECT

public:
    explicit NoticeAgent(QObject *parent = nullptr);

    /// Posts a text to the agent of this process.
    static void post(const QString &text);

private:
    QCopChannel m_channel;
};

} // namespace lumi
