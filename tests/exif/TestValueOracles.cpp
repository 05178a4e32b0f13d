// SPDX-License-Identifier: MIT
// Compares value texts with exiftool's, where both show the same value. exiftool must be installed.
#include "tests/exif/rowText.h"
#include "tests/support/TestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

using lumi::test::ExifBuilder;
using lumi::test::PhotoFolder;
using enum ExifListKind;

namespace {

/// The values of the photo by name; asNumbers: raw numbers instead of words.
QJsonObject exiftoolValues(const QString &path, bool asNumbers)
{
    QStringList arguments{QStringLiteral("-j"), QStringLiteral("-exif:all"), path};
    if (asNumbers) {
        arguments.prepend(QStringLiteral("-n"));
    }
    return QJsonDocument::fromJson(PhotoFolder::output(QStringLiteral("exiftool"), arguments))
        .array()
        .at(0)
        .toObject();
}

/// The first number or fraction in a text; NaN without one.
double numberIn(const QString &text)
{
    static const QRegularExpression kNumber(QStringLiteral("(-?[0-9.]+)(?:/([0-9]+))?"));
    const QRegularExpressionMatch match = kNumber.match(text);
    const double number = match.hasMatch() ? match.captured(1).toDouble() : std::nan("");
    return match.captured(2).isEmpty() ? number : number / match.captured(2).toDouble();
}

/// The degrees in N35.40.30.123. The last group is thousandths of a second.
double degreesIn(const QString &text)
{
    const QStringList groups = text.mid(1).split(QLatin1Char('.'));
    if (groups.size() != 4) {
        return std::nan("");
    }
    constexpr double kMinutes = 60;
    constexpr double kSeconds = 3600;
    const QString seconds = groups[2] + QLatin1Char('.') + groups[3];
    return groups[0].toInt() + groups[1].toInt() / kMinutes + seconds.toDouble() / kSeconds;
}

bool agree(double one, double other)
{
    return std::abs(one - other) <= 1e-5 * std::max(1.0, std::abs(other));
}

struct Row
{
    int group;
    int row;
    const char *name;
};

constexpr Row kTextRows[] = {
    {0, 0, "Make"},        {0, 1, "Model"},  {0, 7, "Software"},         {0, 8, "ImageUniqueID"},
    {0, 9, "ExifVersion"}, {1, 0, "Artist"}, {1, 1, "ImageDescription"}, {1, 4, "RelatedSoundFile"},
    {1, 5, "UserComment"},
};
constexpr Row kDateRows[] = {
    {0, 2, "DateTimeOriginal"},
    {1, 2, "CreateDate"},
    {1, 3, "ModifyDate"},
};
constexpr Row kNumberRows[] = {
    {0, 6, "CompressedBitsPerPixel"},
    {2, 0, "ExposureTime"},
    {2, 1, "FNumber"},
    {2, 3, "ISO"},
    {2, 4, "ShutterSpeedValue"},
    {2, 6, "BrightnessValue"},
    {2, 7, "ExposureCompensation"},
    {2, 9, "SubjectDistance"},
    {3, 3, "FocalLength"},
    {3, 5, "FocalPlaneXResolution"},
    {3, 6, "FocalPlaneYResolution"},
    {4, 1, "DigitalZoomRatio"},
    {4, 2, "FocalLengthIn35mmFormat"},
    {5, 3, "GPSAltitude"},
};
constexpr Row kDegreeRows[] = {{5, 1, "GPSLatitude"}, {5, 2, "GPSLongitude"}};
constexpr Row kWordRows[] = {{0, 5, "ColorSpace"}, {3, 0, "MeteringMode"}};

QString textOf(FPVExifFields &fields, const Row &row)
{
    fields.setGroup(row.group);
    return fields.valueText(row.row, true);
}

ExifBuilder ourPhoto(ExifBuilder::Order order)
{
    ExifBuilder photo(order);
    photo.ascii(Ifd0, 0x010F, "Anvil Works")
        .ascii(Ifd0, 0x0110, "A1")
        .ascii(Ifd0, 0x010E, "Harbour")
        .ascii(Ifd0, 0x0131, "Ver 1.20")
        .ascii(Ifd0, 0x0132, "2004:06:07 08:09:10")
        .ascii(Ifd0, 0x013B, "Ann")
        .ascii(Exif, 0x9003, "2004:05:06 07:08:09")
        .ascii(Exif, 0x9004, "2004:05:06 07:08:10")
        .ascii(Exif, 0xA004, "DSC00001.WAV")
        .ascii(Exif, 0xA420, "0123456789abcdef")
        .undefined(Exif, 0x9000, "0220")
        .undefined(Exif, 0x9286, QByteArray("ASCII\0\0\0a comment", 17))
        .shorts(Exif, 0xA001, {1})
        .shorts(Exif, 0x8827, {400})
        .shorts(Exif, 0x9207, {3})
        .shorts(Exif, 0xA405, {35})
        .rationals(Exif, 0x9102, {{4, 1}})
        .rationals(Exif, 0x829A, {{10, 600}})
        .rationals(Exif, 0x829D, {{28, 10}})
        .rationals(Exif, 0x9206, {{12, 10}})
        .rationals(Exif, 0x920A, {{58, 10}})
        .rationals(Exif, 0xA20E, {{2272000, 224}})
        .rationals(Exif, 0xA20F, {{1704000, 168}})
        .rationals(Exif, 0xA404, {{150, 100}})
        .srationals(Exif, 0x9201, {{6, 1}})
        .srationals(Exif, 0x9203, {{quint32(-25), 10}})
        .srationals(Exif, 0x9204, {{quint32(-7), 10}})
        .ascii(Gps, 0x0001, "N")
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {30123, 1000}})
        .ascii(Gps, 0x0003, "E")
        .rationals(Gps, 0x0004, {{139, 1}, {45, 1}, {7250, 1000}})
        .value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'))
        .rationals(Gps, 0x0006, {{3825, 100}});
    return photo;
}

} // namespace

class TestValueOracles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsAgree_data();
    void textsAgree();
    void numbersAgree_data();
    void numbersAgree();
    void exiftoolsPhotoIsShown();

private:
    PhotoFolder m_folder;
};

void TestValueOracles::textsAgree_data()
{
    QTest::addColumn<int>("order");
    QTest::newRow("little-endian") << 0;
    QTest::newRow("big-endian") << 1;
}

void TestValueOracles::textsAgree()
{
    QFETCH(int, order);
    const QString path = m_folder.put(ourPhoto(lumi::test::kBothOrders[std::size_t(order)]));
    FPVExifFields fields(path);
    QVERIFY(fields.isValid());
    const QJsonObject said = exiftoolValues(path, false);
    const auto valueOf = [&said](const Row &row) {
        return said.value(QLatin1String(row.name)).toVariant().toString();
    };
    for (const Row &row : kTextRows) {
        QVERIFY2(!valueOf(row).isEmpty(), row.name);
        QCOMPARE(textOf(fields, row), valueOf(row));
    }
    for (const Row &row : kWordRows) {
        QVERIFY2(!valueOf(row).isEmpty(), row.name);
        QCOMPARE(textOf(fields, row), valueOf(row));
    }
    for (const Row &row : kDateRows) {
        QVERIFY2(valueOf(row).count(QLatin1Char(':')) == 4, row.name);
        QCOMPARE(textOf(fields, row).replace(QLatin1Char('/'), QLatin1Char(':')), valueOf(row));
    }
}

void TestValueOracles::numbersAgree_data()
{
    textsAgree_data();
}

void TestValueOracles::numbersAgree()
{
    QFETCH(int, order);
    const QString path = m_folder.put(ourPhoto(lumi::test::kBothOrders[std::size_t(order)]));
    FPVExifFields fields(path);
    QVERIFY(fields.isValid());
    const QJsonObject said = exiftoolValues(path, true);
    for (const Row &row : kNumberRows) {
        const QString text = textOf(fields, row);
        const double value = said.value(QLatin1String(row.name)).toDouble(std::nan(""));
        QVERIFY2(agree(numberIn(text), value),
                 qPrintable(QStringLiteral("%1 is %2").arg(text).arg(value)));
    }
    for (const Row &row : kDegreeRows) {
        const QString text = textOf(fields, row);
        const double value = said.value(QLatin1String(row.name)).toDouble(std::nan(""));
        QVERIFY2(agree(degreesIn(text), value),
                 qPrintable(QStringLiteral("%1 is %2").arg(text).arg(value)));
    }
}

void TestValueOracles::exiftoolsPhotoIsShown()
{
    QByteArray jpeg = ExifBuilder::jpeg(32, 24, 0x607080);
    const int app0 = (quint8(jpeg[4]) << 8 | quint8(jpeg[5])) + 2;
    const QString path = m_folder.put(jpeg.remove(2, app0));
    PhotoFolder::output(
        QStringLiteral("exiftool"),
        {QStringLiteral("-q"), QStringLiteral("-overwrite_original"),
         QStringLiteral("-exif:DateTimeOriginal=2004:05:06 07:08:09"),
         QStringLiteral("-exif:Flash#=25"), QStringLiteral("-exif:ExposureTime=1/60"),
         QStringLiteral("-exif:UserComment=a comment"),
         QStringLiteral("-exif:GPSVersionID=2 2 0 0"), QStringLiteral("-exif:SubjectArea=320 240"),
         QStringLiteral("-exif:Contrast#=2"), QStringLiteral("-exif:GPSAltitude=38.5"),
         QStringLiteral("-exif:GPSAltitudeRef#=1"), path});
    FPVExifFields fields(path);
    QVERIFY(fields.isValid());
    QCOMPARE(textOf(fields, {0, 2, ""}), QStringLiteral("2004/05/06 07:08:09"));
    QCOMPARE(textOf(fields, {1, 5, ""}), QStringLiteral("a comment"));
    QCOMPARE(textOf(fields, {2, 0, ""}), QStringLiteral("1/60 sec"));
    QCOMPARE(textOf(fields, {3, 2, ""}), QStringLiteral("Flash\nAuto flash"));
    QCOMPARE(textOf(fields, {3, 7, ""}), QStringLiteral("320,240"));
    QCOMPARE(textOf(fields, {4, 5, ""}), QStringLiteral("Cntrst"));
    QCOMPARE(textOf(fields, {5, 0, ""}), QStringLiteral("Ver 2.2.0.0"));
    QVERIFY(textOf(fields, {5, 3, ""}).startsWith(QLatin1String("-38.")));
}

LUMI_TEST(TestValueOracles)
#include "TestValueOracles.moc"
