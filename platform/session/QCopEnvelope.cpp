// SPDX-License-Identifier: MIT
#include "platform/session/QCopEnvelope.h"

QCopEnvelope::QCopEnvelope(const QCString &channel, const QCString &message)
    : m_channel(channel)
    , m_message(message)
{
    m_data.open(QIODevice::WriteOnly);
    setDevice(&m_data);
}

QCopEnvelope::~QCopEnvelope()
{
    QCopChannel::send(m_channel, m_message, m_data.data());
}
