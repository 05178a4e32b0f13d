// SPDX-License-Identifier: MIT
// exiftool and exiv2 read the same values as our readers, also from photos of exiftool. Both must
// be installed.
#include "exif/read/FPVExifDocument.h"
#include "exif/read/FPVExifFile.h"
#include "exif/tag/FPVExifTagRational.h"
#include "exif/tag/exifFormat.h"
#include "tests/exif/ForeignReaders.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <cstring>
#include <map>
#include <memory>

using lumi::test::ExifBuilder;
using lumi::test::PhotoFolder;
using lumi::test::TagPlace;
using enum ExifListKind;

namespace {

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

/// The value of our tag in the format of exiv2.
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

/// A single fraction that exiftool prints as a plain quotient.
bool isPlainFraction(const FPVExifTag &tag)
{
    constexpr int kShutterSpeed = 0x9201;
    constexpr int kAperture = 0x9202;
    constexpr int kLargestAperture = 0x9205;
    return tag.count() == 1 && typeSize(tag.type()) == 8 && tag.tag() != kShutterSpeed
        && tag.tag() != kAperture && tag.tag() != kLargestAperture;
}

} // namespace

class TestExifOracles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
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
    PhotoFolder m_folder;
    std::map<QString, QString> m_photos; // the path of each
    std::map<QString, lumi::test::Exiv2Tags> m_exiv2;
    std::map<QString, lumi::test::ExiftoolTags> m_exiftool;
    std::map<QString, QByteArray> m_thumbnails;
};

void TestExifOracles::initTestCase()
{
    QStringList paths;
    for (const char *order : {"II", "MM"}) {
        paths.append(lumi::test::exiftoolPhoto(m_folder, QLatin1String(order)));
        m_photos[QLatin1String(order)] = paths.last();
    }
    for (const char *order : {"little", "big"}) {
        const bool big = qstrcmp(order, "big") == 0;
        paths.append(m_folder.put(
            lumi::test::fullPhoto(big ? ExifBuilder::Order::Big : ExifBuilder::Order::Little),
            QString(QLatin1String(order) + QLatin1String(".jpg"))));
        m_photos[QLatin1String(order)] = paths.last();
    }
    m_exiv2 = lumi::test::exiv2Tags(paths);
    m_exiftool = lumi::test::exiftoolTags(paths);
    m_thumbnails = lumi::test::exiftoolThumbnails(paths);
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
    const QString path = m_photos.at(source);
    const auto &foreign = m_exiv2.at(path);
    const FPVExifDocument document(path);
    QVERIFY(document.isValid());
    std::size_t compared = 0;
    for (const auto kind : {Ifd0, Exif, Interoperability, Gps, Ifd1}) {
        for (const FPVExifTag *tag : document.list(kind)) {
            const auto found = foreign.find({kind, tag->tag()});
            QVERIFY2(found != foreign.end(), qPrintable(QString::number(tag->tag(), 16)));
            QCOMPARE(exiv2Value(*tag), found->second.value);
            QCOMPARE(lumi::test::exiv2Type(tag->type()), found->second.type);
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
    const QString path = m_photos.at(source);
    const FPVExifDocument document(path);
    QVERIFY(document.isValid());
    int compared = 0;
    for (const auto &[place, value] : m_exiftool.at(path)) {
        const FPVExifTag *tag = document.find(place.second, place.first);
        QVERIFY2(tag, qPrintable(QString::number(place.second, 16)));
        if (tag->type() == 2) {
            QCOMPARE(tag->text(), value.toString());
        } else if (place == TagPlace(Ifd1, 0x0201)) {
            // exiftool counts offsets from the start of the file.
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
    const QString path = m_photos.at(source);
    const auto &foreign = m_exiv2.at(path);
    FPVExifFile file(path);
    std::size_t walked = 0;
    while (const auto tag = std::unique_ptr<FPVExifTag>(file.nextTag())) {
        ++walked;
        // A walked tag has no directory, so it must agree with the tag in one of them.
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
    const QString path = m_photos.at(source);
    const QByteArray expected = m_thumbnails.at(path);
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
    QVERIFY(!lumi::test::exiv2Tags(path).empty()); // exiv2 finds it
    QVERIFY(!FPVExifDocument(path).isValid());
    QVERIFY(!FPVExifFile(path).isOpen());
}

LUMI_TEST(TestExifOracles)
#include "TestExifOracles.moc"
