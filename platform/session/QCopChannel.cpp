// SPDX-License-Identifier: MIT
#include "platform/session/QCopChannel.h"

#include "platform/session/QCopHub.h"

QCopChannel::QCopChannel(const QCString &channel, QObject *parent)
    : QObject(parent)
    , m_channel(channel)
{
    lumi::QCopHub::instance()->add(this);
}

QCopChannel::~QCopChannel()
{
    if (lumi::QCopHub *hub = lumi::QCopHub::existing()) {
        hub->remove(this);
    }
}

bool QCopChannel::isRegistered(const QCString &channel)
{
    return lumi::QCopHub::instance()->isRegistered(channel);
}

bool QCopChannel::send(const QCString &channel, const QCString &message, const QByteArray &data)
{
    lumi::QCopHub::instance()->send(channel, message, data);
    return true;
}
