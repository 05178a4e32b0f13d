// SPDX-License-Identifier: MIT
#include "import/importTexts.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDate>
#include <QTest>

#include <climits>

class TestImportTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void digitsAreGrouped_data();
    void digitsAreGrouped();
    void theMemoryStandsInAField_data();
    void theMemoryStandsInAField();
    void memoryIsLowBelowTenMegabytes_data();
    void memoryIsLowBelowTenMegabytes();
    void cardsThatFit_data();
    void cardsThatFit();
    void roomHasAMargin_data();
    void roomHasAMargin();
    void photosAreCountedByName();
    void theFoundLineNamesPlaceCountAndSize_data();
    void theFoundLineNamesPlaceCountAndSize();
    void theFolderHasTheDaysName_data();
    void theFolderHasTheDaysName();
    void namesAreNoPlaceholders();
    void placesHaveTheirNames();
};

void TestImportTexts::digitsAreGrouped_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("none") << 0 << QStringLiteral("0");
    QTest::newRow("three digits") << 999 << QStringLiteral("999");
    QTest::newRow("four digits") << 1000 << QStringLiteral("1,000");
    QTest::newRow("six digits") << 123456 << QStringLiteral("123,456");
    QTest::newRow("seven digits") << 1234567 << QStringLiteral("1,234,567");
    QTest::newRow("the maximum") << INT_MAX << QStringLiteral("2,147,483,647");
    QTest::newRow("a failed query") << -1 << QStringLiteral("-1");
    QTest::newRow("no comma behind the sign") << -123 << QStringLiteral("-123");
}

void TestImportTexts::digitsAreGrouped()
{
    const auto [number, text] = lumi::test::row<int, QString>();
    QCOMPARE(lumi::groupedNumber(number), text);
}

void TestImportTexts::theMemoryStandsInAField_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("short") << 0 << QStringLiteral("Available Memory                  0KB");
    QTest::newRow("usual") << 61440 << QStringLiteral("Available Memory             61,440KB");
    QTest::newRow("as wide as the field")
        << 123456789 << QStringLiteral("Available Memory        123,456,789KB");
    QTest::newRow("wider") << INT_MAX << QStringLiteral("Available Memory        2,147,483,647KB");
    QTest::newRow("a failed query")
        << -1 << QStringLiteral("Available Memory                 -1KB");
}

void TestImportTexts::theMemoryStandsInAField()
{
    const auto [freeKB, text] = lumi::test::row<int, QString>();
    QCOMPARE(lumi::memoryText(freeKB), text);
}

void TestImportTexts::memoryIsLowBelowTenMegabytes_data()
{
    lumi::test::columns<int, bool>();
    QTest::newRow("exactly") << 10240 << false;
    QTest::newRow("below") << 10239 << true;
    QTest::newRow("a failed query") << -1 << true;
}

void TestImportTexts::memoryIsLowBelowTenMegabytes()
{
    const auto [freeKB, low] = lumi::test::row<int, bool>();
    QCOMPARE(lumi::isMemoryLow(freeKB), low);
}

void TestImportTexts::cardsThatFit_data()
{
    lumi::test::columns<int, QStringList>();
    const auto row = [](const char *a, const char *b, const char *c, const char *d) {
        return QStringList{QLatin1String(a), QLatin1String(b), QLatin1String(c), QLatin1String(d)};
    };
    QTest::newRow("no free space") << 0 << row("   0", "   0", "   0", "   0");
    QTest::newRow("a failed query") << -1 << row("   0", "   0", "   0", "   0");
    QTest::newRow("one short of the smallest") << 65535 << row("   0", "   0", "   0", "   0");
    QTest::newRow("the smallest") << 65536 << row("   1", "   0", "   0", "   0");
    QTest::newRow("one of the largest") << 524288 << row("   8", "   4", "   2", "   1");
    QTest::newRow("wider than the field") << INT_MAX << row("32767", "16383", "8191", "4095");
}

void TestImportTexts::cardsThatFit()
{
    const auto [freeKB, counts] = lumi::test::row<int, QStringList>();
    QCOMPARE(lumi::capacityText(freeKB),
             QString(QStringLiteral("The quantity on the card that can be imported:  \n"
                                    "    64MB Card          ")
                     + counts.at(0) + QStringLiteral("      128MB Card          ") + counts.at(1)
                     + QStringLiteral("   \n   256MB Card          ") + counts.at(2)
                     + QStringLiteral("      512MB Card          ") + counts.at(3)
                     + QStringLiteral("   ")));
}

void TestImportTexts::roomHasAMargin_data()
{
    lumi::test::columns<int, int, bool>();
    QTest::newRow("just enough") << 100 * 1024 << 10340 << false;
    QTest::newRow("one short") << 100 * 1024 << 10339 << true;
    QTest::newRow("a part of a KB does not count") << 101 * 1024 - 1 << 10340 << false;
    QTest::newRow("a failed query") << 1 << -1 << true;
    QTest::newRow("a sum that has wrapped around") << -2048 << 10238 << false;
    QTest::newRow("and is one short") << -2048 << 10237 << true;
    QTest::newRow("negative parts are rounded toward zero") << -2047 << 10239 << false;
    QTest::newRow("the maximum") << INT_MAX << INT_MAX << false;
}

void TestImportTexts::roomHasAMargin()
{
    const auto [bytes, freeKB, mayNotFit] = lumi::test::row<int, int, bool>();
    QCOMPARE(lumi::mayNotFit(bytes, freeKB), mayNotFit);
}

void TestImportTexts::photosAreCountedByName()
{
    QCOMPARE(lumi::photoCount({}), 0);
    QCOMPARE(lumi::photoCount({QStringLiteral("/a/x.jpg"), QStringLiteral("/a/x.JPEG"),
                               QStringLiteral("/a/x.b.JpG"), QStringLiteral("/a.jpg/x.mov"),
                               QStringLiteral("/a.jpg/noextension"), QStringLiteral("/a/x.jpg.tmp"),
                               QStringLiteral("/a/.jpg"), QStringLiteral("/a/xjpg"),
                               QStringLiteral("/a/x.jpe")}),
             4);
}

void TestImportTexts::theFoundLineNamesPlaceCountAndSize_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("whole KB") << 5 * 1024
                              << QStringLiteral("5KB of data in 3 was detected in SD Card");
    QTest::newRow("rounded toward zero")
        << 6 * 1024 - 1 << QStringLiteral("5KB of data in 3 was detected in SD Card");
    QTest::newRow("negative, rounded toward zero")
        << -(6 * 1024 - 1) << QStringLiteral("-5KB of data in 3 was detected in SD Card");
}

void TestImportTexts::theFoundLineNamesPlaceCountAndSize()
{
    const auto [bytes, text] = lumi::test::row<int, QString>();
    QCOMPARE(lumi::foundText(QStringLiteral("SD Card"), 3, bytes), text);
}

void TestImportTexts::theFolderHasTheDaysName_data()
{
    lumi::test::columns<QDate, QString>();
    QTest::newRow("padded") << QDate(2026, 3, 4) << QStringLiteral("20260304_");
    QTest::newRow("long") << QDate(2026, 12, 31) << QStringLiteral("20261231_");
}

void TestImportTexts::theFolderHasTheDaysName()
{
    const auto [date, name] = lumi::test::row<QDate, QString>();
    QCOMPARE(lumi::defaultFolderName(date), name);
}

void TestImportTexts::namesAreNoPlaceholders()
{
    QCOMPARE(lumi::copiedText(QStringLiteral("50%2"), 7),
             QStringLiteral("All data on the card which has 7 was copied to the 50%2 subfolder of "
                            "\"Photo_Files\"."));
    QCOMPARE(lumi::partlyCopiedText(QStringLiteral("%1"), 7),
             QStringLiteral("All data on the card which has 7 was copied to the %1 subfolder of "
                            "\"Photo_Files\".\n\nAn error occurred while copying. [please verify "
                            "with error details]"));
}

void TestImportTexts::placesHaveTheirNames()
{
    const auto *machine = lumi::test::FakeMachine::install();
    QCOMPARE(lumi::sourceName(machine->cf), QStringLiteral("CF Card"));
    QCOMPARE(lumi::sourceName(machine->sd), QStringLiteral("SD Card"));
    QCOMPARE(lumi::sourceName(QStringLiteral("/anywhere")), QStringLiteral("Photo_Files"));
    Machine::install(nullptr);
}

LUMI_TEST(TestImportTexts)
#include "TestImportTexts.moc"
