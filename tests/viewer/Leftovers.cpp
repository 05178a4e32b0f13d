// SPDX-License-Identifier: MIT
#include "tests/viewer/Leftovers.h"

#include "tests/items/LibraryFaults.h"
#include "tests/support/processFigures.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>

#include <malloc.h>
#include <unistd.h>

namespace {

/// A part of the openings, after which nothing may grow any more.
constexpr int kWarmUpPart = 5;
/// Less than 10 KB an opening in 400 of them; one raster of the screen is 1200 KB.
constexpr qint64 kMostKB = 4000;

struct Figures
{
    qint64 residentKB = 0;
    int files = 0;
    int decompressors = 0;
    qsizetype windows = 0;
};

Figures figures()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    ::malloc_trim(0);
    Figures now;
    QFile memory(QStringLiteral("/proc/self/statm"));
    if (memory.open(QIODevice::ReadOnly)) {
        const QByteArrayList pages = memory.readAll().split(' ');
        now.residentKB = pages.value(1).toLongLong() * (::sysconf(_SC_PAGESIZE) / 1024);
    }
    memory.close();
    now.files = int(QDir(QStringLiteral("/proc/self/fd"))
                        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
                        .size());
    now.decompressors = lumi::test::liveDecompressors();
    now.windows = QApplication::topLevelWidgets().size();
    return now;
}

} // namespace

void lumi::test::leavesNothing(int times, const std::function<void(int number)> &open)
{
    Figures before;
    for (int i = 0; i < times; ++i) {
        if (i == times / kWarmUpPart) {
            before = figures();
        }
        open(i);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
    const Figures after = figures();
    QVERIFY(before.residentKB > 0 && before.files > 0);
    QVERIFY2(after.files <= before.files, qPrintable(QString::number(after.files)));
    QCOMPARE(after.decompressors, 0);
    QCOMPARE(after.windows, before.windows);
    const qint64 grown = after.residentKB - before.residentKB;
    QVERIFY2(grown < kMostKB || !countsMemory(), qPrintable(QString::number(grown)));
}
