// SPDX-License-Identifier: MIT
#include "swap/SwapPlace.h"
#include "swap/swapTime.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QTest>

using namespace lumi::test;

class TestSwapPlace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesOfSwapFiles();
    void onlyFilesOfThePlaceAreHeld_data();
    void onlyFilesOfThePlaceAreHeld();
    void timesAreWholeSecondsIn32Bits_data();
    void timesAreWholeSecondsIn32Bits();
};

namespace {

const lumi::SwapPlace &place()
{
    static const lumi::SwapPlace made(QStringLiteral("/home/u/.photo_swp"), QStringLiteral(".swp"));
    return made;
}

} // namespace

void TestSwapPlace::namesOfSwapFiles()
{
    QCOMPARE(place().imagePath(2, 's', 100, QStringLiteral("a.jpg")),
             QStringLiteral("/home/u/.photo_swp/0002s_100_a.jpg.swp"));
    QCOMPARE(place().imagePath(12345, 'd', -1, QString()),
             QStringLiteral("/home/u/.photo_swp/12345d_-1_.swp"));
    QCOMPARE(place().bufferPath(0, 171, QStringLiteral("%s %1.jpg")),
             QStringLiteral("/home/u/.photo_swp/0000_171_%s %1.jpg.swp"));
    const QString japanese = QString::fromUtf8("\xe6\x97\xa5\xc3\xa9.jpg");
    QCOMPARE(place().imagePath(7, 'l', 300, japanese),
             QString(QStringLiteral("/home/u/.photo_swp/0007l_300_") + japanese
                     + QStringLiteral(".swp")));
}

void TestSwapPlace::onlyFilesOfThePlaceAreHeld_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("a swap file") << "/home/u/.photo_swp/0000s_1_a.jpg.swp" << true;
    QTest::newRow("a name with dots") << "/home/u/.photo_swp/..a.swp" << true;
    QTest::newRow("a photo") << "/home/u/Documents/a.jpg" << false;
    QTest::newRow("no extension") << "/home/u/.photo_swp/a.jpg" << false;
    QTest::newRow("the index") << "/home/u/.photo_swp/.SwapMng.bin" << false;
    QTest::newRow("a folder deeper") << "/home/u/.photo_swp/sub/a.swp" << false;
    QTest::newRow("up and out") << "/home/u/.photo_swp/../a.swp" << false;
    QTest::newRow("a folder of a like name") << "/home/u/.photo_swq/a.swp" << false;
    QTest::newRow("a longer folder") << "/home/u/.photo_swpx/a.swp" << false;
    QTest::newRow("relative") << "a.swp" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("the folder itself") << "/home/u/.photo_swp" << false;
}

void TestSwapPlace::onlyFilesOfThePlaceAreHeld()
{
    const auto [path, held] = lumi::test::row<QString, bool>();
    QCOMPARE(place().holds(path), held);
}

void TestSwapPlace::timesAreWholeSecondsIn32Bits_data()
{
    lumi::test::columns<QDateTime, int>();
    QTest::newRow("a null time is 0") << QDateTime() << 0;
    QTest::newRow("fractions are cut off") << QDateTime::fromMSecsSinceEpoch(1999) << 1;
    QTest::newRow("the last second of 31 bits")
        << QDateTime::fromSecsSinceEpoch(2147483647) << 2147483647;
    QTest::newRow("the low 32 bits after that")
        << QDateTime::fromSecsSinceEpoch(2147483648) << std::numeric_limits<int>::min();
    QTest::newRow("year 2100") << QDateTime::fromSecsSinceEpoch(4102444800) << -192522496;
    QTest::newRow("before 1970") << QDateTime::fromSecsSinceEpoch(-10) << -10;
}

void TestSwapPlace::timesAreWholeSecondsIn32Bits()
{
    const auto [time, seconds] = lumi::test::row<QDateTime, int>();
    QCOMPARE(static_cast<int>(lumi::swapSeconds(time)), seconds);
}

LUMI_TEST(TestSwapPlace)
#include "TestSwapPlace.moc"
