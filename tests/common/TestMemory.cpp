// SPDX-License-Identifier: MIT
#include "app/common/memory.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <climits>

class TestMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void figures_data();
    void figures();
    void machineIsAskedEachTime();
};

void TestMemory::figures_data()
{
    lumi::test::columns<QByteArray, int>();
    const QByteArray heading = "        total:    used:    free:  shared: buffers:  cached:\n";
    const auto row = [&heading](const char *figures) -> QByteArray {
        return heading + "Mem:  " + figures;
    };

    QTest::newRow("without a text there is nothing") << QByteArray() << 0;
    QTest::newRow("a heading alone is nothing") << heading << 0;
    QTest::newRow("free memory counts, less 2 MB") << row("9 9 10485760 0 0 0\n") << 10240 - 2048;
    QTest::newRow("cached memory counts") << row("9 9 0 0 0 10485760\n") << 10240 - 2048;
    QTest::newRow("buffers count twice") << row("9 9 0 0 10485760 0\n") << 20480 - 2048;
    QTest::newRow("shared memory doesn't count") << row("9 9 0 10485760 0 0\n") << 0;
    QTest::newRow("all together") << row("9 9 1048576 5 2097152 4194304\n") << 9216 - 2048;
    QTest::newRow("exactly 2048 KB are nothing") << row("9 9 2097152 0 0 0\n") << 0;
    QTest::newRow("a byte less than 2049 KB is nothing") << row("9 9 2098175 0 0 0\n") << 0;
    QTest::newRow("2049 KB are one") << row("9 9 2098176 0 0 0\n") << 1;
    QTest::newRow("the sum is divided, not its parts") << row("9 9 2097152 0 256 512\n") << 1;
    QTest::newRow("a short row has zeros") << row("9 9 10485760\n") << 10240 - 2048;
    QTest::newRow("words are zeros") << row("total used free shared buffers cached\n") << 0;
    QTest::newRow("a negative figure is zero") << row("9 9 -5 0 0 10485760\n") << 10240 - 2048;
    QTest::newRow("8 GB need more than 32 bits") << row("9 9 8589934592 0 0 0\n") << 8388608 - 2048;
    QTest::newRow("more KB than an int holds")
        << row("9 9 9223372036854775807 0 9223372036854775807 9223372036854775807\n") << INT_MAX;
    QTest::newRow("other lines are not read")
        << heading + "Mem: 9 9 2098176 0 0 0\nSwap: 9 9 99999999\nMemFree: 99999999 kB\n"
        << 1;
}

void TestMemory::figures()
{
    const auto [text, expected] = lumi::test::row<QByteArray, int>();
    QCOMPARE(lumi::memoryToCountOnKB(text), expected);
}

void TestMemory::machineIsAskedEachTime()
{
    auto *machine = lumi::test::FakeMachine::install();
    machine->setMemoryKB(5000);
    QCOMPARE(freeMemoryKB(), 5000 - 2048);
    machine->setMemoryKB(2048);
    QCOMPARE(freeMemoryKB(), 0);
    machine->memory.clear(); // as when the kernel's file can't be opened
    QCOMPARE(freeMemoryKB(), 0);
    Machine::install(nullptr);
}

LUMI_TEST(TestMemory)
#include "TestMemory.moc"
