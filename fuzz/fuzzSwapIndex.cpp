// SPDX-License-Identifier: MIT
// The swap index reader on arbitrary bytes: what it takes in, written and read again, must
// come out the same.
#include "swap/IndexReader.h"
#include "swap/IndexWriter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

static QByteArray rewritten(const QByteArray &bytes)
{
    lumi::IndexReader reader(bytes);
    lumi::IndexWriter writer;
    lumi::IndexHeader header;
    lumi::ControlRecord control;
    lumi::BlockRecord block;
    if (reader.readHeader(header)) {
        writer.writeHeader(header);
    }
    for (int i = 0; i < header.controlCount && reader.readControl(control); ++i) {
        writer.writeControl(control);
        for (int k = 0; k < control.blockCount && reader.readBlock(block); ++k) {
            writer.writeBlock(block);
        }
    }
    return writer.bytes();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QByteArray once = rewritten(bytes);
    if (rewritten(once) != once) {
        std::abort();
    }
    return 0;
}
