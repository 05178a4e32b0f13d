// SPDX-License-Identifier: MIT
// Forms the bytes of an index file, record by record. Characters outside Latin-1 are lost.
#pragma once

#include "swap/indexRecords.h"

#include <QByteArray>

namespace lumi {

class IndexWriter
{
public:
    void writeHeader(const IndexHeader &header);

    /// To be followed by as many block records as the control record says.
    void writeControl(const ControlRecord &control);

    void writeBlock(const BlockRecord &block);

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

private:
    void writeInt(std::int32_t value);
    void writeText(const QString &text);

    QByteArray m_bytes;
};

} // namespace lumi
