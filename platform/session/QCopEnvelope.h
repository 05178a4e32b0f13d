// SPDX-License-Identifier: MIT
// A message that is being written: arguments are streamed in, and the destructor sends it.
#pragma once

#include "platform/session/QCopChannel.h"

#include <QBuffer>
#include <QDataStream>

class QCopEnvelope : public QDataStream
{
public:
    QCopEnvelope(const QCString &channel, const QCString &message);
    ~QCopEnvelope();

private:
    QCString m_channel;
    QCString m_message;
    QBuffer m_data;
};
