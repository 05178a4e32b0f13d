// SPDX-License-Identifier: MIT
#include "app/common/diskSpace.h"

#include "app/common/paths.h"
#include "platform/cards/CardSlots.h"

#include <QFile>

#include <algorithm>
#include <climits>
#include <limits>

namespace {

constexpr qint64 kBlocksThatFit = 1024;
constexpr int kShiftToKB = 10;

int clampedProduct(qint64 a, qint64 b, int shift)
{
    qint64 product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        product = std::numeric_limits<qint64>::max();
    }
    return static_cast<int>(std::clamp<qint64>(product >> shift, 0, INT_MAX));
}

} // namespace

int lumi::blocksToFreeKB(qint64 blockSize, qint64 blocks)
{
    if (blockSize > kBlocksThatFit) {
        return clampedProduct(blockSize >> kShiftToKB, blocks, 0);
    }
    if (blocks <= kBlocksThatFit) {
        return clampedProduct(blockSize, blocks, kShiftToKB);
    }
    return clampedProduct(blockSize, blocks >> kShiftToKB, 0);
}

int lumi::freeDocumentsKB()
{
    return freeDiskKB(QFile::encodeName(documentsPath()));
}

int lumi::freeVolumeKB(const QString &path)
{
    for (const Slot slot : CardSlots::kAll) {
        const QString card = CardSlots::mountPoint(slot);
        if (path.startsWith(card) && CardSlots::isPresent(slot)) {
            return freeDiskKB(QFile::encodeName(card));
        }
    }
    return freeDocumentsKB();
}

int freeDiskKB(const QByteArray &path)
{
    if (path.isNull()) {
        return -1;
    }
    const DiskFigures figures = Machine::instance().disk(path);
    return figures.ok ? lumi::blocksToFreeKB(figures.blockSize, figures.available) : -1;
}

int totalDiskKB(const QByteArray &path)
{
    if (path.isNull()) {
        return -1;
    }
    const DiskFigures figures = Machine::instance().disk(path);
    return figures.ok ? clampedProduct(figures.blockSize >> kShiftToKB, figures.blocks, 0) : -1;
}
