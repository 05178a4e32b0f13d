// SPDX-License-Identifier: MIT
// Whole numbers that are not choices from a list.
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::ExifBuilder;
using lumi::test::rowText;
using enum ExifListKind;

class TestValueNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gpsVersion_data();
    void gpsVersion();
    void figures_data();
    void figures();
    void figuresWithoutAValue();
    void colorSpace_data();
    void colorSpace();
    void subjectArea_data();
    void subjectArea();
    void numbersOfTextRowsAreBytes();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestValueNumbers::gpsVersion_data()
{
    lumi::test::columns<int, int, QByteArray, QString>();
    QTest::newRow("what every photo has")
        << 1 << 4 << QByteArray("\2\2\0\0", 4) << QStringLiteral("Ver 2.2.0.0");
    QTest::newRow("bytes are unsigned")
        << 1 << 4 << QByteArray("\xFF\x80\x7F\x0A") << QStringLiteral("Ver 255.128.127.10");
    QTest::newRow("three bytes") << 1 << 3 << QByteArray("\2\2\0", 3) << QString();
    QTest::newRow("five bytes") << 1 << 5 << QByteArray("\2\2\0\0\0", 5) << QString();
    QTest::newRow("no bytes") << 1 << 0 << QByteArray() << QString();
    QTest::newRow("four SHORTs show their first four bytes")
        << 3 << 4 << QByteArray("\2\0\3\0\0\0\0\0", 8) << QStringLiteral("Ver 2.0.3.0");
    QTest::newRow("one LONG of four bytes") << 4 << 1 << QByteArray("\2\2\0\0", 4) << QString();
}

void TestValueNumbers::gpsVersion()
{
    const auto [type, count, bytes, text] = lumi::test::row<int, int, QByteArray, QString>();
    ExifBuilder photo;
    photo.value(Gps, 0x0000, quint16(type), quint32(count), bytes);
    QCOMPARE(rowText(m_folder, photo, 5, 0), text);
}

void TestValueNumbers::figures_data()
{
    lumi::test::columns<int, int, int, int, quint32, QString>();
    const auto row = [](const char *name, int group, int number, int tag, int type, quint32 value,
                        const char *text) {
        QTest::newRow(name) << group << number << tag << type << value << QString::fromLatin1(text);
    };
    row("speed", 2, 3, 0x8827, 3, 400, "400");
    row("the largest speed of a SHORT", 2, 3, 0x8827, 3, 65535, "65535");
    row("a speed in a LONG", 2, 3, 0x8827, 4, 102400, "102400");
    row("a speed beyond the largest int", 2, 3, 0x8827, 4, 0xFFFFFFFF, "-1");
    row("no speed", 2, 3, 0x8827, 3, 0, "0");
    row("focal length", 4, 2, 0xA405, 3, 35, "35mm");
    row("a focal length in a LONG", 4, 2, 0xA405, 4, 70000, "70000mm");
    row("no focal length", 4, 2, 0xA405, 3, 0, "0mm");
    row("a flash in a LONG", 3, 2, 0x9209, 4, 0x07, "Flash\nReturn detected");
}

void TestValueNumbers::figures()
{
    const auto [group, row, tag, type, value, text]
        = lumi::test::row<int, int, int, int, quint32, QString>();
    for (const auto order : lumi::test::kBothOrders) {
        ExifBuilder photo(order);
        if (type == 3) {
            photo.shorts(Exif, quint16(tag), {quint16(value)});
        } else {
            photo.longs(Exif, quint16(tag), {value});
        }
        QCOMPARE(rowText(m_folder, photo, group, row), text);
    }
}

void TestValueNumbers::figuresWithoutAValue()
{
    // With a count of 0 the value word is not read.
    ExifBuilder photo;
    for (const int tag : {0x8827, 0x9209, 0xA001, 0xA405}) {
        photo.word(Exif, quint16(tag), 3, 0, 1);
    }
    QCOMPARE(rowText(m_folder, photo, 2, 3), QStringLiteral("0"));
    QCOMPARE(rowText(m_folder, photo, 3, 2), QStringLiteral("No flash"));
    QCOMPARE(rowText(m_folder, photo, 0, 5), QString());
    QCOMPARE(rowText(m_folder, photo, 4, 2), QStringLiteral("0mm"));
}

void TestValueNumbers::colorSpace_data()
{
    lumi::test::columns<int, quint32, QString>();
    QTest::newRow("sRGB") << 3 << 1U << QStringLiteral("sRGB");
    QTest::newRow("sRGB in a LONG") << 4 << 1U << QStringLiteral("sRGB");
    QTest::newRow("a SHORT of set bits is 65535") << 3 << 0xFFFFU << QString();
    QTest::newRow("65535 in a LONG") << 4 << 0xFFFFU << QString();
    QTest::newRow("a LONG of set bits is -1") << 4 << 0xFFFFFFFFU << QStringLiteral("Uncalibrated");
    QTest::newRow("0") << 3 << 0U << QString();
    QTest::newRow("2") << 3 << 2U << QString();
}

void TestValueNumbers::colorSpace()
{
    const auto [type, value, text] = lumi::test::row<int, quint32, QString>();
    for (const auto order : lumi::test::kBothOrders) {
        ExifBuilder photo(order);
        if (type == 3) {
            photo.shorts(Exif, 0xA001, {quint16(value)});
        } else {
            photo.longs(Exif, 0xA001, {value});
        }
        QCOMPARE(rowText(m_folder, photo, 0, 5), text);
    }
}

void TestValueNumbers::subjectArea_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("bytes"); // little-endian
    QTest::addColumn<QString>("text");
    QTest::newRow("a place") << 3 << 2 << QByteArray::fromHex("40010200")
                             << QStringLiteral("320,2");
    QTest::newRow("a rectangle") << 3 << 4 << QByteArray::fromHex("0100020003000400")
                                 << QStringLiteral("1,2,3,4");
    QTest::newRow("one value") << 3 << 1 << QByteArray::fromHex("0500") << QStringLiteral("5");
    QTest::newRow("values are signed")
        << 3 << 2 << QByteArray::fromHex("ffff0080") << QStringLiteral("-1,-32768");
    QTest::newRow("no value") << 3 << 0 << QByteArray() << QString();
    QTest::newRow("bytes in pairs, the odd one left out")
        << 1 << 5 << QByteArray::fromHex("0100020003") << QStringLiteral("1,2");
    QTest::newRow("one byte") << 1 << 1 << QByteArray::fromHex("01") << QString();
    QTest::newRow("two LONGs are two values of 16 bits")
        << 4 << 2 << QByteArray::fromHex("0100020003000400") << QStringLiteral("1,2");
}

void TestValueNumbers::subjectArea()
{
    QFETCH(int, type);
    QFETCH(int, count);
    QFETCH(QByteArray, bytes);
    ExifBuilder photo;
    photo.value(Exif, 0x9214, quint16(type), quint32(count), bytes);
    QTEST(rowText(m_folder, photo, 3, 7), "text");
}

void TestValueNumbers::numbersOfTextRowsAreBytes()
{
    ExifBuilder photo;
    photo.value(Ifd0, 0x010F, 1, 5, "Anvil").shorts(Ifd0, 0x0110, {0x4241, 0x0043});
    QCOMPARE(rowText(m_folder, photo, 0, 0), QStringLiteral("Anvil"));
    QCOMPARE(rowText(m_folder, photo, 0, 1), QStringLiteral("ABC"));
}

LUMI_TEST(TestValueNumbers)
#include "TestValueNumbers.moc"
