// SPDX-License-Identifier: MIT
#include "tests/exif/ForeignReaders.h"

#include "tests/exif/PhotoFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

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
        // Composite tags of exiftool have a name as their id.
        if (group != kExiftoolGroups.end() && tag.value(QStringLiteral("id")).isDouble()) {
            tags[{group->second, tag.value(QStringLiteral("id")).toInt()}]
                = tag.value(QStringLiteral("val")).toVariant();
        }
    }
    return tags;
}

/// The output of exiftool, an object for each photo.
QList<QJsonObject> askExiftool(const QStringList &options, const QStringList &paths)
{
    const QStringList always = {QStringLiteral("-q"), QStringLiteral("-j")};
    const QByteArray text
        = lumi::test::PhotoFolder::output(QStringLiteral("exiftool"), always + options + paths);
    QList<QJsonObject> photos;
    for (const auto &photo : QJsonDocument::fromJson(text).array()) {
        photos.append(photo.toObject());
    }
    return photos;
}

QString sourceOf(const QJsonObject &photo)
{
    return photo.value(QStringLiteral("SourceFile")).toString();
}

} // namespace

namespace lumi::test {

std::map<QString, Exiv2Tags> exiv2Tags(const QStringList &paths)
{
    // The path comes first only if there are several photos.
    static const QRegularExpression kLine(
        QStringLiteral("^(.*?) *0x([0-9a-f]{4}) (\\w+) +(\\w+) +(\\d+) *(.*)$"));
    std::map<QString, Exiv2Tags> photos;
    const QStringList options
        = {QStringLiteral("-q"), QStringLiteral("-u"), QStringLiteral("-Pxgycv")};
    const QString text
        = QString::fromLatin1(PhotoFolder::output(QStringLiteral("exiv2"), options + paths));
    for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = kLine.match(line);
        const auto group = kExiv2Groups.find(match.captured(3));
        if (group != kExiv2Groups.end()) {
            const QString &path = paths.size() == 1 ? paths.first() : match.captured(1);
            const QStringList words = match.captured(6).split(QLatin1Char(' '), Qt::SkipEmptyParts);
            photos[path][{group->second, match.captured(2).toInt(nullptr, 16)}]
                = {match.captured(4), match.captured(5).toUInt(), words.join(QLatin1Char(' '))};
        }
    }
    return photos;
}

Exiv2Tags exiv2Tags(const QString &path)
{
    return exiv2Tags(QStringList(path))[path];
}

std::map<QString, ExiftoolTags> exiftoolTags(const QStringList &paths)
{
    std::map<QString, ExiftoolTags> photos;
    const QStringList options
        = {QStringLiteral("-G1"),      QStringLiteral("-n"), QStringLiteral("-a"),
           QStringLiteral("-u"),       QStringLiteral("-D"), QStringLiteral("-b"),
           QStringLiteral("-exif:all")};
    for (const QJsonObject &photo : askExiftool(options, paths)) {
        photos[sourceOf(photo)] = exiftoolTagsOf(photo);
    }
    return photos;
}

std::map<QString, QByteArray> exiftoolThumbnails(const QStringList &paths)
{
    static const QString kName = QStringLiteral("ThumbnailImage");
    static const QString kBefore = QStringLiteral("base64:");
    std::map<QString, QByteArray> thumbnails;
    for (const QJsonObject &photo : askExiftool({QStringLiteral("-b"), u'-' + kName}, paths)) {
        const QString text = photo.value(kName).toString();
        if (text.startsWith(kBefore)) {
            thumbnails[sourceOf(photo)]
                = QByteArray::fromBase64(text.mid(kBefore.size()).toLatin1());
        }
    }
    return thumbnails;
}

QStringList soundPhotos(const QStringList &paths)
{
    const QStringList options
        = {QStringLiteral("-a"), QStringLiteral("-Warning"), QStringLiteral("-Error")};
    QStringList sound;
    for (const QJsonObject &photo : askExiftool(options, paths)) {
        // Only the path.
        if (photo.size() == 1) {
            sound.append(sourceOf(photo));
        }
    }
    return sound;
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
