// SPDX-License-Identifier: MIT
#include "platform/session/QCopChannel.h"

#include "platform/session/QCopHub.h"

QCopChannel::QCopChannel(const QCString &channel, QObject *parent)
    : QObject(parent)
    , m_channel(channel)
{
    if (lumi::QCopHub *hub = lumi::QCopHub::instance()) {
        hub->add(this);
    }
}

QCopChannel::~QCopChannel()
{
    if (lumi::QCopHub *hub = lumi::QCopHub::existing()) {
        hub->remove(this);
    }
}

bool QCopChannel::isRegistered(const QCString &channel)
{
    const lumi::QCopHub *hub = lumi::QCopHub::existing();
    return hub != nullptr && hub->isRegistered(channel);
}

bool QCopChannel::send(const QCString &channel, const QCString &message, const QByteArray &data)
{
    lumi::QCopHub *hub = lumi::QCopHub::instance();
    if (hub == nullptr) {
        return false;
    }
    hub->send(channel, message, data);
    return true;
}
