// SPDX-License-Identifier: MIT
#include "tests/exif/ForeignReaders.h"

#include "tests/exif/PhotoFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using enum ExifListKind;

namespace {

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

lumi::test::ExiftoolTags exiftoolTagsOf(const QJsonObject &photo)
{
    lumi::test::ExiftoolTags tags;
    for (auto it = photo.begin(); it != photo.end(); ++it) {
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

} // namespace

namespace lumi::test {

std::map<TagPlace, ForeignTag> exiv2Tags(const QString &path)
{
    std::map<TagPlace, ForeignTag> tags;
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

std::map<QString, ExiftoolTags> exiftoolTags(const QStringList &paths)
{
    std::map<QString, ExiftoolTags> photos;
    const QStringList options
        = {QStringLiteral("-q"), QStringLiteral("-j"), QStringLiteral("-G1"),
           QStringLiteral("-n"), QStringLiteral("-a"), QStringLiteral("-u"),
           QStringLiteral("-D"), QStringLiteral("-b"), QStringLiteral("-exif:all")};
    const QByteArray text = PhotoFolder::output(QStringLiteral("exiftool"), options + paths);
    const QJsonArray array = QJsonDocument::fromJson(text).array();
    for (const auto &photo : array) {
        const QJsonObject object = photo.toObject();
        photos[object.value(QStringLiteral("SourceFile")).toString()] = exiftoolTagsOf(object);
    }
    return photos;
}

QString exiv2Type(int type)
{
    static const QStringList kNames = {
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
    return kNames.value(type);
}

QString exiftoolPhoto(PhotoFolder &folder, const QString &order)
{
    QByteArray jpeg = ExifBuilder::jpeg(32, 24, 0x607080);
    const int app0 = (quint8(jpeg[4]) << 8 | quint8(jpeg[5])) + 2;
    jpeg.remove(2, app0);
    QString path = folder.put(jpeg, order + QStringLiteral(".jpg"));
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

} // namespace lumi::test
