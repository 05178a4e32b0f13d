// SPDX-License-Identifier: MIT
#include "tests/items/BareDecoder.h"

#include "tests/items/JpegMaker.h"
#include "tests/support/PeakMemory.h"

#include <QTest>

#include <cstdio>
#include <ctime>

namespace lumi::test {

namespace {

constexpr int kMostTimes = 2;
constexpr int kAttempts = 3;
constexpr int kThumbnailScale = 8;

/// With full colour, because photos of any sampling must be decoded, and as large as in cameras.
const QByteArray &photo()
{
    static const QByteArray kBytes = makeJpeg(
        {.size = QSize(4000, 3000), .sampling = QSize(1, 1), .progressive = true, .quality = 30});
    return kBytes;
}

Cost bareCost()
{
    const QByteArray &bytes = photo();
    return costOf([&bytes] {
        (void)referenceDecode(bytes, kThumbnailScale);
    });
}

QString text(Cost cost)
{
    return QString::asprintf("%.0f ms and %ld KB", cost.milliseconds, cost.kilobytes);
}

} // namespace

Cost costOf(const std::function<void()> &job)
{
    const PeakMemory memory;
    const std::clock_t start = std::clock();
    job();
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    return {seconds * 1000, memory.growthKB()};
}

QString faultOfCost(const std::function<void()> &job)
{
    static Cost bare = bareCost();
    QString fault;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const Cost cost = costOf(job);
        if (cost.milliseconds <= kMostTimes * bare.milliseconds
            && cost.kilobytes <= kMostTimes * bare.kilobytes) {
            return {};
        }
        fault = text(cost) + QStringLiteral(", the bare decoder ") + text(bare);
        bare = bareCost();
    }
    return fault;
}

} // namespace lumi::test
