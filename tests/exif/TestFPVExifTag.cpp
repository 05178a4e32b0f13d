// SPDX-License-Identifier: MIT
#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/FPVExifTagNumber.h"
#include "exif/tag/FPVExifTagRational.h"
#include "exif/tag/FPVExifTagString.h"
#include "exif/tag/fillFormat.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <cstring>
#include <memory>

class TestFPVExifTag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRootHasNoValue();
    void everyClassTakesItsNameFromTheDictionary();
    void numbers_data();
    void numbers();
    void rationals_data();
    void rationals();
    void strings_data();
    void strings();
    void stringDataNeverExceedsTheString_data();
    void stringDataNeverExceedsTheString();
    void bytesAsANumber_data();
    void bytesAsANumber();
    void bytesAsAText_data();
    void bytesAsAText();
    void bytesAreACopy();
    void formats_data();
    void formats();
};

void TestFPVExifTag::theRootHasNoValue()
{
    const FPVExifTag tag(0x010F, 2, 77);
    QCOMPARE(tag.tag(), quint16(0x010F));
    QCOMPARE(tag.type(), quint16(2));
    QCOMPARE(tag.count(), 77U);
    QCOMPARE(tag.intValue(), 0);
    QVERIFY(tag.text().isNull());
    QVERIFY(!tag.data());
    QVERIFY(tag.description().isEmpty());
}

void TestFPVExifTag::everyClassTakesItsNameFromTheDictionary()
{
    const std::unique_ptr<FPVExifTag> tags[] = {
        std::make_unique<FPVExifTag>(0x829A, 5, 1),
        std::make_unique<FPVExifTagNumber>(0x829A, 5, 1, 3),
        std::make_unique<FPVExifTagRational>(0x829A, 5, 1, 3, 4),
        std::make_unique<FPVExifTagString>(0x829A, 5, 1, QStringLiteral("x")),
        std::make_unique<FPVExifTagBytes>(0x829A, 5, 1, std::span<const char>()),
    };
    for (const auto &tag : tags) {
        QCOMPARE(tag->name(), QStringLiteral("ExposureTime"));
    }
    QVERIFY(FPVExifTagNumber(0xEEEE, 3, 1, 3).name().isNull());
}

void TestFPVExifTag::numbers_data()
{
    lumi::test::columns<qint32, QString>();
    QTest::newRow("a small number") << 42 << QStringLiteral("42");
    QTest::newRow("zero") << 0 << QStringLiteral("0");
    QTest::newRow("a negative number") << -7 << QStringLiteral("-7");
    QTest::newRow("all bits set") << qint32(0xFFFFFFFF) << QStringLiteral("-1");
}

void TestFPVExifTag::numbers()
{
    const auto [value, text] = lumi::test::row<qint32, QString>();
    const FPVExifTagNumber tag(0x0112, 3, 1, value);
    QCOMPARE(tag.intValue(), value);
    QCOMPARE(tag.text(), text);
    QCOMPARE(tag.description(), text);
    qint32 stored = 0;
    std::memcpy(&stored, tag.data(), sizeof stored);
    QCOMPARE(stored, value);
}

void TestFPVExifTag::rationals_data()
{
    lumi::test::columns<qint32, qint32, QString, QString>();
    QTest::newRow("a whole quotient") << 60 << 1 << QStringLiteral("60") << QStringLiteral("60/1");
    QTest::newRow("a quotient with six digits")
        << 1 << 3 << QStringLiteral("0.333333") << QStringLiteral("1/3");
    QTest::newRow("nothing is reduced")
        << 10 << 600 << QStringLiteral("0.0166667") << QStringLiteral("10/600");
    QTest::newRow("negative words") << -1 << 4 << QStringLiteral("-0.25") << QStringLiteral("-1/4");
    QTest::newRow("over zero") << 1 << 0 << QStringLiteral("inf") << QStringLiteral("1/0");
    QTest::newRow("zero over zero") << 0 << 0 << QStringLiteral("nan") << QStringLiteral("0/0");
}

void TestFPVExifTag::rationals()
{
    const auto [first, second, text, description]
        = lumi::test::row<qint32, qint32, QString, QString>();
    const FPVExifTagRational tag(0x829A, 5, 1, first, second);
    QCOMPARE(tag.intValue(), first);
    QCOMPARE(tag.first(), first);
    QCOMPARE(tag.second(), second);
    QCOMPARE(tag.text(), text);
    QCOMPARE(tag.description(), description);
    qint32 stored = 0;
    std::memcpy(&stored, tag.data(), sizeof stored);
    QCOMPARE(stored, first);
}

void TestFPVExifTag::strings_data()
{
    lumi::test::columns<QString, int>();
    QTest::newRow("a word") << QStringLiteral("Anvil") << 0;
    QTest::newRow("a number") << QStringLiteral("123") << 123;
    QTest::newRow("nothing") << QStringLiteral("") << 0;
    QTest::newRow("a text that looks like a format") << QStringLiteral("%s %d %1") << 0;
}

void TestFPVExifTag::strings()
{
    const auto [string, value] = lumi::test::row<QString, int>();
    const FPVExifTagString tag(0x010F, 2, quint32(string.size() + 1), string);
    QCOMPARE(tag.text(), string);
    QCOMPARE(tag.description(), string);
    QCOMPARE(tag.intValue(), value);
    QCOMPARE(QByteArray(tag.data()), string.toLatin1());
}

void TestFPVExifTag::stringDataNeverExceedsTheString_data()
{
    lumi::test::columns<quint32, QByteArray>();
    QTest::newRow("a count below the length cuts") << 2U << QByteArray("An");
    QTest::newRow("the count of the file") << 6U << QByteArray("Anvil");
    QTest::newRow("a count that is too large adds nothing") << 0xFFFFFFFFU << QByteArray("Anvil");
    QTest::newRow("no count, no bytes") << 0U << QByteArray();
}

void TestFPVExifTag::stringDataNeverExceedsTheString()
{
    const auto [count, data] = lumi::test::row<quint32, QByteArray>();
    const FPVExifTagString tag(0x010F, 2, count, QStringLiteral("Anvil"));
    QCOMPARE(QByteArray(tag.data()), data);
}

void TestFPVExifTag::bytesAsANumber_data()
{
    lumi::test::columns<QByteArray, int>();
    const quint16 shortValue = 0xFFFE;
    const qint32 longValue = -3;
    const auto *two = reinterpret_cast<const char *>(&shortValue);
    const auto *four = reinterpret_cast<const char *>(&longValue);
    QTest::newRow("no byte counts as 0") << QByteArray() << 0;
    QTest::newRow("one byte") << QByteArray("\xC8") << 200;
    QTest::newRow("two bytes have no sign") << QByteArray(two, 2) << 0xFFFE;
    QTest::newRow("four bytes have one") << QByteArray(four, 4) << -3;
    QTest::newRow("a fifth byte does not count") << QByteArray(four, 4) + '\x7F' << -3;
}

void TestFPVExifTag::bytesAsANumber()
{
    const auto [bytes, value] = lumi::test::row<QByteArray, int>();
    const FPVExifTagBytes tag(0x0112, 7, quint32(bytes.size()), bytes);
    QCOMPARE(tag.intValue(), value);
    QVERIFY(tag.data());
    QCOMPARE(QByteArray(tag.data(), tag.size()), bytes);
}

void TestFPVExifTag::bytesAsAText_data()
{
    lumi::test::columns<QByteArray, QString>();
    QTest::newRow("a closed text") << QByteArray("Anvil\0", 6) << QStringLiteral("Anvil");
    QTest::newRow("a text without an end stops with the array")
        << QByteArray("Anvil") << QStringLiteral("Anvil");
    QTest::newRow("the first NUL ends it") << QByteArray("An\0vil", 6) << QStringLiteral("An");
    QTest::newRow("UTF-8") << QByteArray("\xC3\xA4") << QString(QChar(0xE4));
    QTest::newRow("nothing") << QByteArray() << QStringLiteral("");
}

void TestFPVExifTag::bytesAsAText()
{
    const auto [bytes, text] = lumi::test::row<QByteArray, QString>();
    // The array has exactly that size, so a sanitizer notices a read behind it.
    const FPVExifTagBytes tag(0x010F, 2, quint32(bytes.size()), bytes);
    QCOMPARE(tag.text(), text);
    QVERIFY(tag.description().isEmpty());
}

void TestFPVExifTag::bytesAreACopy()
{
    QByteArray bytes("first");
    const FPVExifTagBytes tag(0x010F, 7, 5, bytes);
    bytes.fill('x');
    QCOMPARE(QByteArray(tag.data(), tag.size()), QByteArray("first"));
}

void TestFPVExifTag::formats_data()
{
    lumi::test::columns<QString, QStringList, QString>();
    QTest::newRow("one value") << QStringLiteral("%d") << QStringList{QStringLiteral("5")}
                               << QStringLiteral("5");
    QTest::newRow("two in order") << QStringLiteral("%d/%d")
                                  << QStringList{QStringLiteral("1"), QStringLiteral("60")}
                                  << QStringLiteral("1/60");
    QTest::newRow("text around") << QStringLiteral("<%s>") << QStringList{QStringLiteral("a")}
                                 << QStringLiteral("<a>");
    QTest::newRow("placeholders in a value stay")
        << QStringLiteral("%s %s") << QStringList{QStringLiteral("%s"), QStringLiteral("b")}
        << QStringLiteral("%s b");
    QTest::newRow("one value too few")
        << QStringLiteral("%d/%d") << QStringList{QStringLiteral("1")} << QStringLiteral("1/");
    QTest::newRow("other placeholders stay")
        << QStringLiteral("%n%x%") << QStringList{QStringLiteral("1")} << QStringLiteral("%n%x%");
    QTest::newRow("nothing") << QStringLiteral("") << QStringList{QStringLiteral("1")}
                             << QStringLiteral("");
}

void TestFPVExifTag::formats()
{
    const auto [format, values, filled] = lumi::test::row<QString, QStringList, QString>();
    QCOMPARE(lumi::fillFormat(format, values), filled);
}

LUMI_TEST(TestFPVExifTag)
#include "TestFPVExifTag.moc"
