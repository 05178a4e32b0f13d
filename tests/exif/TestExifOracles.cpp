// SPDX-License-Identifier: MIT
// Independent programs read what our readers read, and write what they read. Both programs
// must be installed.
#include "exif/FPVExifDocument.h"
#include "exif/FPVExifFile.h"
#include "exif/FPVExifTagRational.h"
#include "exif/typeSize.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cstring>
#include <map>
#include <memory>

using lumi::test::ExifBuilder;
using lumi::test::PhotoFolder;
using enum ExifListKind;

namespace {

struct ForeignTag
{
    QString type;
    quint32 count = 0;
    QString value;
};

using Place = std::pair<ExifListKind, int>;

const std::map<QString, ExifListKind> kExiv2Groups = {
    {QStringLiteral("Image"), Ifd0},           {QStringLiteral("Photo"), Exif},
    {QStringLiteral("Iop"), Interoperability}, {QStringLiteral("GPSInfo"), Gps},
    {QStringLiteral("Thumbnail"), Ifd1},
};

const std::map<QString, ExifListKind> kExiftoolGroups = {
    {QStringLiteral("IFD0"), Ifd0},
    {QStringLiteral("ExifIFD"), Exif},
    {QStringLiteral("InteropIFD"), Interoperability},
    {QStringLiteral("GPS"), Gps},
    {QStringLiteral("IFD1"), Ifd1},
};

/// Every tag of the block as exiv2 prints it: number, group, type, count, raw value.
std::map<Place, ForeignTag> exiv2Tags(const QString &path)
{
    std::map<Place, ForeignTag> tags;
    const QString text = QString::fromLatin1(PhotoFolder::output(
        QStringLiteral("exiv2"),
        {QStringLiteral("-q"), QStringLiteral("-u"), QStringLiteral("-Pxgycv"), path}));
    for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const auto group = kExiv2Groups.find(words.value(1));
        if (words.size() >= 4 && group != kExiv2Groups.end()) {
            tags[{group->second, words[0].toInt(nullptr, 16)}]
                = {words[2], words[3].toUInt(), words.mid(4).join(QLatin1Char(' '))};
        }
    }
    return tags;
}

/// The tags of the block as exiftool gives them, ids and plain values.
std::map<Place, QVariant> exiftoolTags(const QString &path)
{
    std::map<Place, QVariant> tags;
    const QByteArray text = PhotoFolder::output(
        QStringLiteral("exiftool"),
        {QStringLiteral("-j"), QStringLiteral("-G1"), QStringLiteral("-n"), QStringLiteral("-a"),
         QStringLiteral("-u"), QStringLiteral("-D"), QStringLiteral("-exif:all"), path});
    const QJsonObject object = QJsonDocument::fromJson(text).array().at(0).toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        const auto group = kExiftoolGroups.find(it.key().section(QLatin1Char(':'), 0, 0));
        const QJsonObject tag = it.value().toObject();
        // Values that exiftool puts together itself have a name for an id.
        if (group != kExiftoolGroups.end() && tag.value(QStringLiteral("id")).isDouble()) {
            tags[{group->second, tag.value(QStringLiteral("id")).toInt()}]
                = tag.value(QStringLiteral("val")).toVariant();
        }
    }
    return tags;
}

template <class Number> Number numberAt(const QByteArray &bytes, qsizetype place)
{
    Number number = 0;
    std::memcpy(&number, bytes.constData() + place, sizeof number);
    return number;
}

QString valueAt(int type, const QByteArray &bytes, qsizetype place)
{
    switch (type) {
    case 3:
        return QString::number(numberAt<quint16>(bytes, place));
    case 4:
        return QString::number(numberAt<quint32>(bytes, place));
    case 9:
        return QString::number(numberAt<qint32>(bytes, place));
    case 5:
        return QStringLiteral("%1/%2")
            .arg(numberAt<quint32>(bytes, place))
            .arg(numberAt<quint32>(bytes, place + 4));
    case 10:
        return QStringLiteral("%1/%2")
            .arg(numberAt<qint32>(bytes, place))
            .arg(numberAt<qint32>(bytes, place + 4));
    default:
        return QString::number(numberAt<quint8>(bytes, place));
    }
}

/// A tag of ours written as exiv2 writes it.
QString exiv2Value(const FPVExifTag &tag)
{
    const QByteArray bytes = lumi::test::bytesOf(&tag);
    if (tag.type() == 2) {
        return QString::fromLatin1(bytes.constData());
    }
    QStringList values;
    for (qsizetype i = 0; i < bytes.size(); i += typeSize(tag.type())) {
        values.append(valueAt(tag.type(), bytes, i));
    }
    return values.join(QLatin1Char(' '));
}

const QStringList kExiv2Types = {
    QString(),
    QStringLiteral("Byte"),
    QStringLiteral("Ascii"),
    QStringLiteral("Short"),
    QStringLiteral("Long"),
    QStringLiteral("Rational"),
    QStringLiteral("SByte"),
    QStringLiteral("Undefined"),
    QStringLiteral("SShort"),
    QStringLiteral("SLong"),
    QStringLiteral("SRational"),
};

/// A single fraction that exiftool gives as it is and not as what it stands for.
bool isPlainFraction(const FPVExifTag &tag)
{
    constexpr int kShutterSpeed = 0x9201;
    constexpr int kAperture = 0x9202;
    constexpr int kLargestAperture = 0x9205;
    return tag.count() == 1 && typeSize(tag.type()) == 8 && tag.tag() != kShutterSpeed
        && tag.tag() != kAperture && tag.tag() != kLargestAperture;
}

/// A photo whose Exif segment follows its start, written by exiftool.
QString exiftoolPhoto(PhotoFolder &folder, const QString &order)
{
    QByteArray jpeg = ExifBuilder::jpeg(32, 24, 0x607080);
    const int app0 = (quint8(jpeg[4]) << 8 | quint8(jpeg[5])) + 2;
    jpeg.remove(2, app0);
    const QString path = folder.put(jpeg, order + QStringLiteral(".jpg"));
    const QString thumbnail
        = folder.put(ExifBuilder::jpeg(20, 15, 0x804020), QStringLiteral("thumbnail.jpg"));
    const QStringList tags = {
        QStringLiteral("-Make=Anvil Works"),
        QStringLiteral("-Model=A1"),
        QStringLiteral("-Orientation#=6"),
        QStringLiteral("-ExposureTime=1/60"),
        QStringLiteral("-FNumber=2.8"),
        QStringLiteral("-ISO=400"),
        QStringLiteral("-ShutterSpeedValue=1/64"),
        QStringLiteral("-ExposureCompensation=-0.7"),
        QStringLiteral("-Flash#=25"),
        QStringLiteral("-ColorSpace#=1"),
        QStringLiteral("-FocalLength=5.8"),
        QStringLiteral("-ExifImageWidth=3264"),
        QStringLiteral("-Artist=A long name that does not fit an entry"),
        QStringLiteral("-DateTimeOriginal=2004:05:06 07:08:09"),
        QStringLiteral("-GPSLatitude=35.67"),
        QStringLiteral("-GPSLatitudeRef=N"),
        QStringLiteral("-GPSLongitude=139.5"),
        QStringLiteral("-GPSLongitudeRef=E"),
        QStringLiteral("-GPSAltitude=38"),
        QStringLiteral("-InteropIndex=R98"),
    };
    const QString thumbnailOption = QStringLiteral("-ThumbnailImage<=") + thumbnail;
    PhotoFolder::output(QStringLiteral("exiftool"),
                        QStringList{QStringLiteral("-q"), QStringLiteral("-overwrite_original"),
                                    QStringLiteral("-exifbyteorder=") + order, thumbnailOption}
                            + tags + QStringList{path});
    return path;
}

} // namespace

class TestExifOracles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void documentAgreesWithExiv2_data();
    void documentAgreesWithExiv2();
    void documentAgreesWithExiftool_data();
    void documentAgreesWithExiftool();
    void walkAgreesWithExiv2_data();
    void walkAgreesWithExiv2();
    void thumbnailAgreesWithExiftool_data();
    void thumbnailAgreesWithExiftool();
    void segmentBehindAnotherIsNotRead();

private:
    QString photo(const QString &source);

    PhotoFolder m_folder;
};

QString TestExifOracles::photo(const QString &source)
{
    if (source == QLatin1String("II") || source == QLatin1String("MM")) {
        return exiftoolPhoto(m_folder, source);
    }
    const bool big = source == QLatin1String("big");
    return m_folder.put(
        lumi::test::fullPhoto(big ? ExifBuilder::Order::Big : ExifBuilder::Order::Little));
}

void TestExifOracles::documentAgreesWithExiv2_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("our own photo, little-endian") << QStringLiteral("little");
    QTest::newRow("our own photo, big-endian") << QStringLiteral("big");
    QTest::newRow("a photo of exiftool, little-endian") << QStringLiteral("II");
    QTest::newRow("a photo of exiftool, big-endian") << QStringLiteral("MM");
}

void TestExifOracles::documentAgreesWithExiv2()
{
    QFETCH(QString, source);
    const QString path = photo(source);
    const auto foreign = exiv2Tags(path);
    const FPVExifDocument document(path);
    QVERIFY(document.isValid());
    std::size_t compared = 0;
    for (const auto kind : {Ifd0, Exif, Interoperability, Gps, Ifd1}) {
        for (const FPVExifTag *tag : document.list(kind)) {
            const auto found = foreign.find({kind, tag->tag()});
            QVERIFY2(found != foreign.end(), qPrintable(QString::number(tag->tag(), 16)));
            QCOMPARE(exiv2Value(*tag), found->second.value);
            QCOMPARE(kExiv2Types.value(tag->type()), found->second.type);
            QCOMPARE(tag->count(), found->second.count);
            ++compared;
        }
    }
    QCOMPARE(compared, foreign.size());
    QVERIFY(compared >= 26);
}

void TestExifOracles::documentAgreesWithExiftool_data()
{
    documentAgreesWithExiv2_data();
}

void TestExifOracles::documentAgreesWithExiftool()
{
    QFETCH(QString, source);
    const QString path = photo(source);
    const FPVExifDocument document(path);
    QVERIFY(document.isValid());
    int compared = 0;
    for (const auto &[place, value] : exiftoolTags(path)) {
        const FPVExifTag *tag = document.find(place.second, place.first);
        QVERIFY2(tag, qPrintable(QString::number(place.second, 16)));
        if (tag->type() == 2) {
            QCOMPARE(tag->text(), value.toString());
        } else if (place == Place(Ifd1, 0x0201)) {
            // exiftool counts from the start of the file
            QCOMPARE(tag->intValue() + document.tiffBase(), value.toInt());
        } else if (tag->count() == 1 && typeSize(tag->type()) <= 4 && tag->type() != 7) {
            QCOMPARE(tag->intValue(), value.toInt());
        } else if (isPlainFraction(*tag)) {
            const QStringList words = exiv2Value(*tag).split(QLatin1Char('/'));
            const double expected = words[0].toDouble() / words[1].toDouble();
            QVERIFY(qAbs(value.toDouble() - expected) <= qAbs(expected) * 1e-6);
        } else {
            continue;
        }
        ++compared;
    }
    QVERIFY2(compared >= 13, qPrintable(QString::number(compared)));
}

void TestExifOracles::walkAgreesWithExiv2_data()
{
    documentAgreesWithExiv2_data();
}

void TestExifOracles::walkAgreesWithExiv2()
{
    QFETCH(QString, source);
    const QString path = photo(source);
    const auto foreign = exiv2Tags(path);
    FPVExifFile file(path);
    std::size_t walked = 0;
    while (const auto tag = std::unique_ptr<FPVExifTag>(file.nextTag())) {
        ++walked;
        // The flat walk does not say where a tag is from: one place must agree.
        bool agrees = false;
        for (const auto kind : {Ifd0, Exif, Interoperability, Gps, Ifd1}) {
            const auto found = foreign.find({kind, tag->tag()});
            if (found == foreign.end() || found->second.count != tag->count()) {
                continue;
            }
            const QStringList values = found->second.value.split(QLatin1Char(' '));
            if (dynamic_cast<const FPVExifTagRational *>(tag.get())) {
                const QStringList words = values.value(0).split(QLatin1Char('/'));
                agrees |= tag->description() == words.value(1) + QLatin1Char('/') + words.value(0);
            } else if (tag->type() == 2) {
                agrees |= tag->text() == found->second.value;
            } else if (tag->type() == 7) {
                agrees |= lumi::test::bytesOf(tag.get()).size() == values.size();
            } else {
                agrees |= tag->text() == values.value(0)
                    || tag->count() * quint32(typeSize(tag->type())) > 4;
            }
        }
        QVERIFY2(agrees, qPrintable(QString::number(tag->tag(), 16)));
    }
    QCOMPARE(walked, foreign.size());
}

void TestExifOracles::thumbnailAgreesWithExiftool_data()
{
    documentAgreesWithExiv2_data();
}

void TestExifOracles::thumbnailAgreesWithExiftool()
{
    QFETCH(QString, source);
    const QString path = photo(source);
    const QByteArray expected
        = PhotoFolder::output(QStringLiteral("exiftool"),
                              {QStringLiteral("-b"), QStringLiteral("-ThumbnailImage"), path});
    FPVExifDocument document(path);
    QVERIFY(document.hasThumbnail());
    QVERIFY(document.seek(qint64(document.tiffBase()) + document.thumbnailOffset()));
    QCOMPARE(document.read(document.thumbnailLength()), expected);
    const std::unique_ptr<QImage> image(document.thumbnail());
    QVERIFY(image);
    QCOMPARE(*image, QImage::fromData(expected));
}

void TestExifOracles::segmentBehindAnotherIsNotRead()
{
    const QString path
        = m_folder.put(ExifBuilder::jpeg(32, 24, 0), QStringLiteral("with-app0.jpg"));
    PhotoFolder::output(QStringLiteral("exiftool"),
                        {QStringLiteral("-q"), QStringLiteral("-overwrite_original"),
                         QStringLiteral("-Make=Anvil"), path});
    QVERIFY(!exiv2Tags(path).empty()); // it is there
    QVERIFY(!FPVExifDocument(path).isValid());
    QVERIFY(!FPVExifFile(path).isOpen());
}

LUMI_TEST(TestExifOracles)
#include "TestExifOracles.moc"
