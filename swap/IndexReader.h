// SPDX-License-Identifier: MIT
// Reads the index records from the bytes of an index file, which may be cut or damaged. It does not
// access files, so the diagnostic tool and the fuzzer can use it, too. Every length is checked
// against the bytes that are left. After the first field that is short or absurd all further reads
// fail; records read before it are kept.
#pragma once

#include "swap/indexRecords.h"

#include <QByteArray>

class QIODevice;

namespace lumi {

class IndexReader
{
public:
    /// The whole file, or its first 4 MB. An index has a few hundred bytes for each block, and the
    /// store keeps about a thousand blocks.
    [[nodiscard]] static QByteArray bytesOf(QIODevice &file);

    /// The bytes are shared with the caller's array.
    explicit IndexReader(const QByteArray &bytes);

    /// Each of the three returns false, with the record unchanged, if the record is cut or has an
    /// absurd field. A negative count is absurd. If a count is too large for the bytes left, one of
    /// the next reads fails.
    [[nodiscard]] bool readHeader(IndexHeader &header);
    [[nodiscard]] bool readControl(ControlRecord &control);
    [[nodiscard]] bool readBlock(BlockRecord &block);

    /// True once a read has failed.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    [[nodiscard]] qsizetype left() const { return m_bytes.size() - m_position; }

    std::int32_t readInt();
    std::int32_t readCount();
    QString readText();

    QByteArray m_bytes;
    qsizetype m_position = 0;
    bool m_failed = false;
};

} // namespace lumi
