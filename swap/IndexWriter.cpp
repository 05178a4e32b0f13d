// SPDX-License-Identifier: MIT
#include "swap/IndexWriter.h"

#include <QtEndian>

void lumi::IndexWriter::writeHeader(const IndexHeader &header)
{
    writeInt(header.writingTime);
    writeInt(header.controlCount);
}

void lumi::IndexWriter::writeControl(const ControlRecord &control)
{
    writeInt(control.id);
    writeInt(control.blockCount);
    writeText(control.folder);
}

void lumi::IndexWriter::writeBlock(const BlockRecord &block)
{
    writeText(block.sourceName);
    writeInt(block.sourceTime);
    writeInt(block.width);
    writeInt(block.height);
    writeInt(block.param);
    writeInt(block.kind);
    writeText(block.swapPath);
    writeInt(block.swapTime);
}

void lumi::IndexWriter::writeInt(std::int32_t value)
{
    char bytes[sizeof value];
    qToLittleEndian(value, bytes);
    m_bytes.append(bytes, sizeof bytes);
}

void lumi::IndexWriter::writeText(const QString &text)
{
    const QByteArray characters = text.toLatin1();
    const qsizetype padding = 4 - characters.size() % 4;
    writeInt(static_cast<std::int32_t>(characters.size()));
    m_bytes.append(characters);
    m_bytes.append(padding, '\0');
}
