// SPDX-License-Identifier: MIT
// Positions and altitudes. Each text is made of two tags.
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::ExifBuilder;
using lumi::test::rowText;
using enum ExifListKind;

namespace {

constexpr int kGroup = 5;
constexpr int kLatitude = 1;
constexpr int kLongitude = 2;
constexpr int kAltitude = 3;

} // namespace

class TestValueGps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void position();
    void reference_data();
    void reference();
    void tooFewFractions_data();
    void tooFewFractions();
    void positionNeedsItsReference();
    void altitude_data();
    void altitude();
    void altitudeReference_data();
    void altitudeReference();
    void altitudeNeedsItsReference();
    void altitudeNeedsItsFraction();
    void referencesComeFromTheGpsList();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestValueGps::position()
{
    for (const auto order : lumi::test::kBothOrders) {
        ExifBuilder photo(order);
        photo.ascii(Gps, 0x0001, "S")
            .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {20, 1}})
            .ascii(Gps, 0x0003, "E")
            .rationals(Gps, 0x0004, {{139, 1}, {45, 1}, {3012, 100}});
        for (const bool withUnit : {true, false}) {
            QCOMPARE(rowText(m_folder, photo, kGroup, kLatitude, withUnit),
                     QStringLiteral("S35.40.20.000"));
            QCOMPARE(rowText(m_folder, photo, kGroup, kLongitude, withUnit),
                     QStringLiteral("E139.45.30.012"));
        }
    }
}

void TestValueGps::reference_data()
{
    lumi::test::columns<QByteArray, QString, QString>();
    const QString none;
    QTest::newRow("north") << QByteArray("N") << QStringLiteral("N35.40.20.000") << none;
    QTest::newRow("south") << QByteArray("S") << QStringLiteral("S35.40.20.000") << none;
    QTest::newRow("east") << QByteArray("E") << none << QStringLiteral("E035.40.20.000");
    QTest::newRow("west") << QByteArray("W") << none << QStringLiteral("W035.40.20.000");
    QTest::newRow("lower case") << QByteArray("n") << none << none;
    QTest::newRow("a word") << QByteArray("North") << none << none;
    QTest::newRow("nothing") << QByteArray() << none << none;
    QTest::newRow("a blank behind") << QByteArray("N ") << none << none;
    QTest::newRow("more behind the NUL")
        << QByteArray("N\0x", 3) << QStringLiteral("N35.40.20.000") << none;
}

void TestValueGps::reference()
{
    const auto [stored, latitude, longitude] = lumi::test::row<QByteArray, QString, QString>();
    ExifBuilder photo;
    photo.ascii(Gps, 0x0001, stored)
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {20, 1}})
        .ascii(Gps, 0x0003, stored)
        .rationals(Gps, 0x0004, {{35, 1}, {40, 1}, {20, 1}});
    QCOMPARE(rowText(m_folder, photo, kGroup, kLatitude), latitude);
    QCOMPARE(rowText(m_folder, photo, kGroup, kLongitude), longitude);
}

void TestValueGps::tooFewFractions_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
}

void TestValueGps::tooFewFractions()
{
    QFETCH(int, count);
    ExifBuilder photo;
    const QByteArray bytes(count * 8, '\1');
    photo.ascii(Gps, 0x0001, "N").ascii(Gps, 0x0003, "E");
    photo.value(Gps, 0x0002, 5, quint32(count), bytes);
    photo.value(Gps, 0x0004, 5, quint32(count), bytes);
    QVERIFY(rowText(m_folder, photo, kGroup, kLatitude).isNull());
    QVERIFY(rowText(m_folder, photo, kGroup, kLongitude).isNull());
}

void TestValueGps::positionNeedsItsReference()
{
    ExifBuilder photo;
    photo.rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {20, 1}})
        .rationals(Gps, 0x0004, {{139, 1}, {45, 1}, {30, 1}});
    QVERIFY(rowText(m_folder, photo, kGroup, kLatitude).isNull());
    QVERIFY(rowText(m_folder, photo, kGroup, kLongitude).isNull());
}

void TestValueGps::altitude_data()
{
    lumi::test::columns<quint32, quint32, QString>();
    QTest::newRow("whole metres") << 10U << 1U << QStringLiteral("10.0");
    QTest::newRow("hundredths") << 1050U << 100U << QStringLiteral("10.50");
    QTest::newRow("five hundredths lose their zero") << 1005U << 100U << QStringLiteral("10.5");
    QTest::newRow("thousandths are not valid") << 10123U << 1000U << QString();
    QTest::newRow("over zero") << 10U << 0U << QString();
}

void TestValueGps::altitude()
{
    const auto [numerator, denominator, text] = lumi::test::row<quint32, quint32, QString>();
    for (const auto order : lumi::test::kBothOrders) {
        ExifBuilder photo(order);
        photo.value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'));
        photo.rationals(Gps, 0x0006, {{numerator, denominator}});
        QCOMPARE(rowText(m_folder, photo, kGroup, kAltitude, false), text);
        // Without a valid text, only the unit is shown.
        QCOMPARE(rowText(m_folder, photo, kGroup, kAltitude, true), text + QLatin1Char('m'));
    }
}

void TestValueGps::altitudeReference_data()
{
    lumi::test::columns<int, QByteArray, QString>();
    QTest::newRow("0 is above") << 1 << QByteArray(1, '\0') << QStringLiteral("38.5");
    QTest::newRow("1 is below") << 1 << QByteArray(1, '\1') << QStringLiteral("-38.5");
    QTest::newRow("255 is below") << 1 << QByteArray(1, '\xFF') << QStringLiteral("-38.5");
    QTest::newRow("a text of 0 is below") << 2 << QByteArray("0") << QStringLiteral("-38.5");
    QTest::newRow("the first byte alone counts")
        << 1 << QByteArray("\0\1", 2) << QStringLiteral("38.5");
    QTest::newRow("no byte is above") << 1 << QByteArray() << QStringLiteral("38.5");
}

void TestValueGps::altitudeReference()
{
    const auto [type, bytes, text] = lumi::test::row<int, QByteArray, QString>();
    ExifBuilder photo;
    photo.value(Gps, 0x0005, quint16(type), quint32(bytes.size()), bytes)
        .rationals(Gps, 0x0006, {{385, 10}});
    QCOMPARE(rowText(m_folder, photo, kGroup, kAltitude, false), text);
}

void TestValueGps::altitudeNeedsItsReference()
{
    ExifBuilder photo;
    photo.rationals(Gps, 0x0006, {{10, 1}});
    QVERIFY(rowText(m_folder, photo, kGroup, kAltitude, true).isNull());
    QVERIFY(rowText(m_folder, photo, kGroup, kAltitude, false).isNull());
}

void TestValueGps::altitudeNeedsItsFraction()
{
    ExifBuilder photo;
    photo.value(Gps, 0x0005, 1, 1, QByteArray(1, '\0')).word(Gps, 0x0006, 5, 0, 1);
    QVERIFY(rowText(m_folder, photo, kGroup, kAltitude, true).isNull());
}

void TestValueGps::referencesComeFromTheGpsList()
{
    ExifBuilder photo;
    photo.ascii(Interoperability, 0x0001, "N")
        .ascii(Ifd0, 0x0001, "N")
        .shorts(Exif, 0x8822, {1})
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {20, 1}});
    QVERIFY(rowText(m_folder, photo, kGroup, kLatitude).isNull());
}

LUMI_TEST(TestValueGps)
#include "TestValueGps.moc"
