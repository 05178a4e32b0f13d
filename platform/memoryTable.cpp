// SPDX-License-Identifier: MIT
#include "platform/memoryTable.h"

#include <QByteArrayList>

#include <limits>

namespace {

constexpr qint64 kBytesPerKB = 1024;

bool isTable(const QByteArray &text)
{
    const qsizetype secondLine = text.indexOf('\n') + 1;
    return secondLine > 0 && text.mid(secondLine).trimmed().startsWith("Mem:");
}

/// Bytes of the line "<name>  <number> kB", 0 without such a line.
qint64 bytesOf(const QByteArrayList &lines, const char *name)
{
    for (const QByteArray &line : lines) {
        const QByteArrayList fields = line.simplified().split(' ');
        if (fields.size() > 1 && fields.first() == name) {
            const qint64 kb = fields.at(1).toLongLong();
            return qBound(0LL, kb, std::numeric_limits<qint64>::max() / kBytesPerKB) * kBytesPerKB;
        }
    }
    return 0;
}

} // namespace

QByteArray lumi::memoryTable(const QByteArray &text)
{
    if (isTable(text)) {
        return text;
    }
    const QByteArrayList lines = text.split('\n');
    const qint64 total = bytesOf(lines, "MemTotal:");
    const qint64 free = bytesOf(lines, "MemFree:");
    QByteArray row = "Mem: ";
    for (const qint64 bytes : {total, qMax(0LL, total - free), free, 0LL,
                               bytesOf(lines, "Buffers:"), bytesOf(lines, "Cached:")}) {
        row += ' ' + QByteArray::number(bytes);
    }
    return "        total:    used:    free:  shared: buffers:  cached:\n" + row + '\n';
}
