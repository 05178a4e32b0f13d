// SPDX-License-Identifier: MIT
#include "app/common/memory.h"

#include "platform/Machine.h"

#include <QList>

#include <climits>

namespace {

// Columns of the table's second line, the row label being column 0.
constexpr int kFreeColumn = 3;
constexpr int kBuffersColumn = 5;
constexpr int kCachedColumn = 6;
constexpr int kShiftToKB = 10;
constexpr qint64 kKeptBackKB = 2048;
constexpr qint64 kLargestFigure = qint64(1) << 60; // four of them can be added

qint64 figure(const QList<QByteArray> &fields, int column)
{
    return qBound<qint64>(0, fields.value(column).toLongLong(), kLargestFigure);
}

} // namespace

int lumi::memoryToCountOnKB(const QByteArray &figures)
{
    const QByteArray secondLine = figures.split('\n').value(1);
    const QList<QByteArray> fields = secondLine.simplified().split(' ');
    // Buffers count twice on purpose: the kernel frees them first.
    const qint64 bytes = figure(fields, kFreeColumn) + figure(fields, kCachedColumn)
        + 2 * figure(fields, kBuffersColumn);
    const qint64 kiloBytes = bytes >> kShiftToKB;
    if (kiloBytes <= kKeptBackKB) {
        return 0;
    }
    return static_cast<int>(qMin<qint64>(kiloBytes - kKeptBackKB, INT_MAX));
}

int freeMemoryKB()
{
    return lumi::memoryToCountOnKB(Machine::instance().memInfo());
}
