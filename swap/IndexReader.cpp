// SPDX-License-Identifier: MIT
#include "swap/IndexReader.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace {

constexpr int kIntBytes = 4;
constexpr qint64 kMaxBytes = qint64(4) * 1024 * 1024;

/// 64 bits, so that no length can overflow.
constexpr qint64 textFieldBytes(qint64 length)
{
    return (length + 4) & ~qint64(3);
}

} // namespace

QByteArray lumi::IndexReader::bytesOf(QIODevice &file)
{
    // Limited, because read() allocates the whole size that it is asked for.
    return file.read(std::min(file.size(), kMaxBytes));
}

lumi::IndexReader::IndexReader(const QByteArray &bytes)
    : m_bytes(bytes)
{ }

bool lumi::IndexReader::readHeader(IndexHeader &header)
{
    IndexHeader read;
    read.writingTime = readInt();
    read.controlCount = readCount();
    if (!m_failed) {
        header = read;
    }
    return !m_failed;
}

bool lumi::IndexReader::readControl(ControlRecord &control)
{
    ControlRecord read;
    read.id = readInt();
    read.blockCount = readCount();
    read.folder = readText();
    if (!m_failed) {
        control = read;
    }
    return !m_failed;
}

bool lumi::IndexReader::readBlock(BlockRecord &block)
{
    BlockRecord read;
    read.sourceName = readText();
    read.sourceTime = readInt();
    read.width = readInt();
    read.height = readInt();
    read.param = readInt();
    read.kind = static_cast<signed char>(readInt() & 0x7f);
    read.swapPath = readText();
    read.swapTime = readInt();
    if (!m_failed) {
        block = read;
    }
    return !m_failed;
}

std::int32_t lumi::IndexReader::readInt()
{
    if (m_failed || left() < kIntBytes) {
        m_failed = true;
        return 0;
    }
    const auto value = qFromLittleEndian<std::int32_t>(m_bytes.constData() + m_position);
    m_position += kIntBytes;
    return value;
}

std::int32_t lumi::IndexReader::readCount()
{
    const std::int32_t count = readInt();
    m_failed = m_failed || count < 0;
    return m_failed ? 0 : count;
}

QString lumi::IndexReader::readText()
{
    const std::int32_t length = readCount();
    const qint64 field = textFieldBytes(length);
    if (m_failed || left() < field) {
        m_failed = true;
        return {};
    }
    const char *start = m_bytes.constData() + m_position;
    m_position += static_cast<qsizetype>(field);
    // The text ends at a zero byte, which no file name contains.
    return QString::fromLatin1(
        start, static_cast<qsizetype>(qstrnlen(start, static_cast<std::size_t>(length))));
}
