// SPDX-License-Identifier: MIT
#include "platform/files/diskFigures.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <sys/statvfs.h>

class TestDiskFigures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void finds_data();
    void finds();
    void findsNothing_data();
    void findsNothing();
    void asksTheFileSystem();
    void aPathThatIsNotThereFails();
};

void TestDiskFigures::finds_data()
{
    lumi::test::columns<QByteArray, qint64, qint64, bool>();
    QTest::newRow("the path itself") << QByteArray("/home") << qint64(4096) << qint64(20) << true;
    QTest::newRow("a path below") << QByteArray("/home/a/b") << qint64(4096) << qint64(20) << true;
    QTest::newRow("the longest counts")
        << QByteArray("/home/full/x") << qint64(512) << qint64(0) << true;
    QTest::newRow("a name with a blank")
        << QByteArray("/my card/x") << qint64(32768) << qint64(4294967296) << true;
    QTest::newRow("a longer name is another")
        << QByteArray("/home2") << qint64(1) << qint64(3) << true;
    QTest::newRow("block size 0 is a failure")
        << QByteArray("/bad") << qint64(0) << qint64(0) << false;
}

void TestDiskFigures::finds()
{
    const auto [path, blockSize, available, ok]
        = lumi::test::row<QByteArray, qint64, qint64, bool>();
    const QByteArray text = "/ 1 2 3\n"
                            "/home/full 512 100 0\n"
                            "/home   4096\t10 20\n"
                            "/my card 32768 4294967296 4294967296\n"
                            "/bad 0 0 0";
    const std::optional<DiskFigures> figures = lumi::findDiskFigures(text, path);
    QVERIFY(figures.has_value());
    QCOMPARE(figures->blockSize, blockSize);
    QCOMPARE(figures->available, available);
    QCOMPARE(figures->ok, ok);
}

void TestDiskFigures::findsNothing_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("no text") << QByteArray();
    QTest::newRow("another path") << QByteArray("/mnt 1 2 3\n");
    QTest::newRow("numbers without a path") << QByteArray("1 2 3\n");
    QTest::newRow("a path without numbers") << QByteArray("/home\n/home 1\n/home 1 2\n");
}

void TestDiskFigures::findsNothing()
{
    QFETCH(QByteArray, text);
    QVERIFY(!lumi::findDiskFigures(text, "/home").has_value());
}

void TestDiskFigures::asksTheFileSystem()
{
    struct statvfs expected = {};
    QCOMPARE(statvfs("/", &expected), 0);
    const DiskFigures figures = lumi::statDisk("/");
    QVERIFY(figures.ok);
    QCOMPARE(figures.blockSize, static_cast<qint64>(expected.f_bsize));
    QCOMPARE(figures.blocks, static_cast<qint64>(expected.f_blocks));
    QVERIFY(figures.available <= figures.blocks);
}

void TestDiskFigures::aPathThatIsNotThereFails()
{
    QVERIFY(!lumi::statDisk("/no/such/folder").ok);
    QVERIFY(!lumi::statDisk("").ok);
    QVERIFY(!lumi::statDisk(QByteArray()).ok);
}

LUMI_TEST(TestDiskFigures)
#include "TestDiskFigures.moc"
