// SPDX-License-Identifier: MIT
#include "app/common/diskSpace.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTest>

#include <climits>

class TestDiskSpace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void freeKilobytes_data();
    void freeKilobytes();
    void totalKilobytes_data();
    void totalKilobytes();
    void nullPathIsNotAsked();
    void failedQuestionIsMinusOne();
    void realDiskIsAsked();

private:
    lumi::test::FakeMachine *m_machine = nullptr;
};

void TestDiskSpace::init()
{
    m_machine = lumi::test::FakeMachine::install();
}

void TestDiskSpace::cleanup()
{
    Machine::install(nullptr);
}

void TestDiskSpace::freeKilobytes_data()
{
    QTest::addColumn<qint64>("blockSize");
    QTest::addColumn<qint64>("blocks");
    QTest::addColumn<int>("expected");
    const qint64 one = 1;
    QTest::newRow("three blocks of 4096 are 12 KB") << 4096 * one << 3 * one << 12;
    QTest::newRow("three blocks of 512 are 1 KB, rounded down") << 512 * one << 3 * one << 1;
    QTest::newRow("one block of 512 is nothing") << 512 * one << one << 0;
    QTest::newRow("1024 small blocks are multiplied first") << 512 * one << 1024 * one << 512;
    QTest::newRow("1025 small blocks are divided first") << 512 * one << 1025 * one << 512;
    QTest::newRow("2047 small blocks lose nearly half") << 512 * one << 2047 * one << 512;
    QTest::newRow("2048 small blocks are exact") << 512 * one << 2048 * one << 1024;
    QTest::newRow("a block of 1024 counts as small") << 1024 * one << 3000 * one << 2048;
    QTest::newRow("a block of 1025 counts as 1 KB") << 1025 * one << 3000 * one << 3000;
    QTest::newRow("an odd block size is cut to whole KB") << 2047 * one << 10 * one << 10;
    QTest::newRow("a full disk has nothing") << 4096 * one << qint64(0) << 0;
    QTest::newRow("2 TB less one block still fit") << 4096 * one << (one << 29) - 1 << INT_MAX - 3;
    QTest::newRow("2 TB are limited to the largest number") << 4096 * one << (one << 29) << INT_MAX;
    QTest::newRow("more than 64 bits are held as well") << (one << 40) << (one << 50) << INT_MAX;
}

void TestDiskSpace::freeKilobytes()
{
    QFETCH(qint64, blockSize);
    QFETCH(qint64, blocks);
    QFETCH(int, expected);
    QCOMPARE(lumi::blocksToFreeKB(blockSize, blocks), expected);
    m_machine->diskAt = [=](const QByteArray &) {
        return DiskFigures{blockSize, blocks + 77777, blocks, true};
    };
    QCOMPARE(freeDiskKB("/anywhere"), expected);
}

void TestDiskSpace::totalKilobytes_data()
{
    QTest::addColumn<qint64>("blockSize");
    QTest::addColumn<qint64>("blocks");
    QTest::addColumn<int>("expected");
    QTest::newRow("blocks of 4096") << qint64(4096) << qint64(100) << 400;
    QTest::newRow("small blocks count as nothing") << qint64(512) << qint64(100) << 0;
    QTest::newRow("4 TB are limited") << qint64(4096) << (qint64(1) << 30) << INT_MAX;
}

void TestDiskSpace::totalKilobytes()
{
    QFETCH(qint64, blockSize);
    QFETCH(qint64, blocks);
    QFETCH(int, expected);
    m_machine->diskAt = [=](const QByteArray &) {
        return DiskFigures{blockSize, blocks, 1, true};
    };
    QCOMPARE(totalDiskKB("/anywhere"), expected);
}

void TestDiskSpace::nullPathIsNotAsked()
{
    bool asked = false;
    m_machine->diskAt = [&asked](const QByteArray &) {
        asked = true;
        return DiskFigures{4096, 100, 100, true};
    };
    QCOMPARE(freeDiskKB(QByteArray()), -1);
    QCOMPARE(totalDiskKB(QByteArray()), -1);
    QVERIFY(!asked);
}

void TestDiskSpace::failedQuestionIsMinusOne()
{
    m_machine->diskAt = [](const QByteArray &) {
        return DiskFigures{4096, 100, 100, false};
    };
    QCOMPARE(freeDiskKB("/anywhere"), -1);
    QCOMPARE(totalDiskKB("/anywhere"), -1);
}

void TestDiskSpace::realDiskIsAsked()
{
    Machine::install(nullptr);
    QVERIFY(freeDiskKB(QFile::encodeName(QDir::homePath())) > 0);
    QVERIFY(totalDiskKB(QFile::encodeName(QDir::homePath())) > 0);
    QCOMPARE(freeDiskKB("/no/such/folder"), -1);
}

LUMI_TEST(TestDiskSpace)
#include "TestDiskSpace.moc"
