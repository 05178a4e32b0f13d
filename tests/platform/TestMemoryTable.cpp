// SPDX-License-Identifier: MIT
#include "platform/memoryTable.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

namespace {

const QByteArray kHeading = "        total:    used:    free:  shared: buffers:  cached:\n";

} // namespace

class TestMemoryTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makes_data();
    void makes();
    void aTableComesBackAsItIs();
};

void TestMemoryTable::makes_data()
{
    lumi::test::columns<QByteArray, QByteArray>();
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &expected) {
        QTest::newRow(name) << text << expected;
    };
    row("today's lines, in bytes",
        "MemTotal:         100 kB\nMemFree:           10 kB\nMemAvailable:     90 kB\n"
        "Buffers:            3 kB\nCached:             7 kB\nSwapCached:        50 kB\n",
        "102400 92160 10240 0 3072 7168");
    row("missing lines are 0", "MemTotal: 5 kB\n", "5120 5120 0 0 0 0");
    row("more than 32 bits of KB", "MemTotal: 8589934592 kB\nMemFree: 8589934592 kB\n",
        "8796093022208 0 8796093022208 0 0 0");
    row("more than 64 bits of bytes is capped", "MemFree: 9223372036854775807 kB\n",
        "0 0 9223372036854774784 0 0 0");
    row("negative figures are 0", "MemFree: -5 kB\n", "0 0 0 0 0 0");
    row("rubbish is 0", "MemFree\nBuffers: many kB\nCached:\n", "0 0 0 0 0 0");
    row("an empty text is 0", "", "0 0 0 0 0 0");
}

void TestMemoryTable::makes()
{
    const auto [text, row] = lumi::test::row<QByteArray, QByteArray>();
    QCOMPARE(lumi::memoryTable(text), QByteArray(kHeading + "Mem:  " + row + '\n'));
}

void TestMemoryTable::aTableComesBackAsItIs()
{
    const QByteArray table = kHeading + "Mem:  64 32 16 0 8 4\nSwap: 0 0 0\nMemTotal: 1 kB\n";
    QCOMPARE(lumi::memoryTable(table), table);
}

LUMI_TEST(TestMemoryTable)
#include "TestMemoryTable.moc"
