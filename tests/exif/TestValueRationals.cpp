// SPDX-License-Identifier: MIT
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::ExifBuilder;
using lumi::test::rowText;
using enum ExifListKind;

namespace {

void addColumns()
{
    lumi::test::columns<int, int, int, qint64, qint64, QString>();
}

void add(const char *name, const QList<int> &place, qint64 numerator, qint64 denominator,
         const char *text)
{
    QTest::newRow(name) << place[0] << place[1] << place[2] << numerator << denominator
                        << QString::fromLatin1(text);
}

} // namespace

class TestValueRationals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fractions_data();
    void fractions();
    void signedFractions_data();
    void signedFractions();
    void valueTooShort_data();
    void valueTooShort();
    void onlyTheFirstFractionCounts();
    void unitsDoNotDependOnWithUnit();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestValueRationals::fractions_data()
{
    addColumns();
    const QList<int> bits = {0, 6, 0x9102};
    const QList<int> exposure = {2, 0, 0x829A};
    const QList<int> number = {2, 1, 0x829D};
    const QList<int> aperture = {2, 5, 0x9202};
    const QList<int> largest = {2, 8, 0x9205};
    const QList<int> distance = {2, 9, 0x9206};
    const QList<int> length = {3, 3, 0x920A};
    const QList<int> energy = {3, 4, 0xA20B};
    const QList<int> planeX = {3, 5, 0xA20E};
    const QList<int> planeY = {3, 6, 0xA20F};
    const QList<int> zoom = {4, 1, 0xA404};
    add("bits a pixel", bits, 4, 1, "4/1 bit/pel");
    add("bits a pixel, not reduced", bits, 4000, 1000, "4000/1000 bit/pel");
    add("bits a pixel over zero", bits, 4, 0, "4/0 bit/pel");
    add("an exposure time", exposure, 1, 60, "1/60 sec");
    add("an exposure time is not reduced", exposure, 10, 600, "10/600 sec");
    add("an exposure time over zero", exposure, 1, 0, "1/0 sec");
    add("the largest words", exposure, 0xFFFFFFFF, 0xFFFFFFFF, "4294967295/4294967295 sec");
    add("an f-number", number, 28, 10, "2.8");
    add("an f-number over zero", number, 28, 0, "inf");
    add("zero over zero", number, 0, 0, "nan");
    add("words are unsigned", number, 0xFFFFFFFF, 1, "4.29497e+09");
    add("an aperture", aperture, 30, 10, "F3");
    add("an aperture over zero", aperture, 30, 0, "Finf");
    add("the largest aperture", largest, 297, 100, "F2.97");
    add("the largest aperture over zero", largest, 297, 0, "Finf");
    add("a distance", distance, 12, 10, "1.2m");
    add("an infinite distance", distance, 0xFFFFFFFF, 1, "4.29497e+09m");
    add("a distance over zero", distance, 0, 0, "nanm");
    add("a focal length", length, 58, 10, "5.8mm");
    add("a third has six digits", length, 1, 3, "0.333333mm");
    add("a focal length over zero", length, 58, 0, "infmm");
    add("flash energy", energy, 25, 2, "12.5");
    add("flash energy over zero", energy, 25, 0, "inf");
    add("focal plane, across", planeX, 2272000, 224, "10142.9");
    add("focal plane, down", planeY, 1704000, 168, "10142.9");
    add("focal plane, across, over zero", planeX, 2272000, 0, "inf");
    add("focal plane, down, zero over zero", planeY, 0, 0, "nan");
    add("a very small quotient", planeX, 1, 4000000000, "2.5e-10");
    add("a zoom ratio", zoom, 100, 100, "100/100");
    add("a zoom ratio over zero", zoom, 0, 0, "0/0");
    add("a GPS time has no text", {5, 4, 0x0007}, 12, 1, "");
    add("a GPS date has no text", {5, 5, 0x0029}, 12, 1, "");
}

void TestValueRationals::fractions()
{
    const auto [group, row, tag, numerator, denominator, text]
        = lumi::test::row<int, int, int, qint64, qint64, QString>();
    for (const auto order : lumi::test::kBothOrders) {
        ExifBuilder photo(order);
        photo.rationals(group == 5 ? Gps : Exif, quint16(tag),
                        {{quint32(numerator), quint32(denominator)}});
        QCOMPARE(rowText(m_folder, photo, group, row), text);
    }
}

void TestValueRationals::signedFractions_data()
{
    addColumns();
    const QList<int> shutter = {2, 4, 0x9201};
    const QList<int> brightness = {2, 6, 0x9203};
    const QList<int> bias = {2, 7, 0x9204};
    add("a 64th of a second", shutter, 6, 1, "1/64sec");
    add("two seconds", shutter, -1, 1, "2sec");
    add("a second", shutter, 0, 1, "1sec");
    add("a second, over a negative number", shutter, 0, -1, "1sec");
    add("the power is cut, not rounded", shutter, 59, 10, "1/59sec"); // 59.71
    add("less than half of a second", shutter, 9, 10, "1/1sec");      // 1.87
    add("the cut of a long time", shutter, -15, 10, "2sec");          // 2.83
    add("both words are negative", shutter, -6, -1, "1/64sec");
    add("over zero", shutter, 6, 0, "");
    add("negative over zero", shutter, -6, 0, "");
    add("zero over zero", shutter, 0, 0, "");
    add("the largest power that fits", shutter, 30, 1, "1/1073741824sec");
    add("a power that just does not fit", shutter, 31, 1, "1/2147483647sec");
    add("a power far too large", shutter, 0x7FFFFFFF, 1, "1/2147483647sec");
    add("a time far too long", shutter, -2147483647 - 1, 1, "2147483647sec");
    add("brightness", brightness, 25, 10, "2.5(BV)");
    add("darkness", brightness, -1, 4, "-0.25(BV)");
    add("brightness over zero", brightness, 1, 0, "inf(BV)");
    add("no bias", bias, 0, 3, "0(EV)");
    add("a bias", bias, 1, 3, "0.333333(EV)");
    add("a negative bias", bias, -7, 10, "-0.7(EV)");
    add("a negative denominator", bias, 7, -10, "-0.7(EV)");
    add("a bias over zero", bias, -1, 0, "-inf(EV)");
    add("zero bias over zero", bias, 0, 0, "nan(EV)");
    add("a tag of unsigned fractions", {2, 0, 0x829A}, 1, 60, "");
}

void TestValueRationals::signedFractions()
{
    const auto [group, row, tag, numerator, denominator, text]
        = lumi::test::row<int, int, int, qint64, qint64, QString>();
    for (const auto order : lumi::test::kBothOrders) {
        ExifBuilder photo(order);
        photo.srationals(Exif, quint16(tag), {{quint32(numerator), quint32(denominator)}});
        QCOMPARE(rowText(m_folder, photo, group, row), text);
    }
}

void TestValueRationals::valueTooShort_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("unsigned") << 5;
    QTest::newRow("signed") << 10;
}

void TestValueRationals::valueTooShort()
{
    QFETCH(int, type);
    ExifBuilder photo;
    for (const int tag : {0x9102, 0x829A, 0x829D, 0x9201, 0x9202, 0x9203, 0x9204, 0x9205, 0x9206,
                          0x920A, 0xA20B, 0xA20E, 0xA20F, 0xA404}) {
        photo.word(Exif, quint16(tag), quint16(type), 0, 1);
    }
    FPVExifFields fields(m_folder.put(photo));
    QVERIFY(fields.isValid());
    for (int group = 0; group < 6; ++group) {
        fields.setGroup(group);
        for (int row = 0; row < fields.rowCount(); ++row) {
            QVERIFY(fields.valueText(row, true).isNull());
        }
    }
}

void TestValueRationals::onlyTheFirstFractionCounts()
{
    ExifBuilder photo;
    photo.rationals(Exif, 0x829A, {{1, 60}, {1, 30}}).srationals(Exif, 0x9204, {{1, 2}, {1, 4}});
    QCOMPARE(rowText(m_folder, photo, 2, 0), QStringLiteral("1/60 sec"));
    QCOMPARE(rowText(m_folder, photo, 2, 7), QStringLiteral("0.5(EV)"));
}

void TestValueRationals::unitsDoNotDependOnWithUnit()
{
    ExifBuilder photo;
    photo.rationals(Exif, 0x829A, {{1, 60}})
        .rationals(Exif, 0x9206, {{12, 10}})
        .srationals(Exif, 0x9201, {{6, 1}});
    QCOMPARE(rowText(m_folder, photo, 2, 0, false), QStringLiteral("1/60 sec"));
    QCOMPARE(rowText(m_folder, photo, 2, 9, false), QStringLiteral("1.2m"));
    QCOMPARE(rowText(m_folder, photo, 2, 4, false), QStringLiteral("1/64sec"));
}

LUMI_TEST(TestValueRationals)
#include "TestValueRationals.moc"
