// SPDX-License-Identifier: MIT
// Photos as read and written by exiftool and exiv2. Starting them takes much longer than reading a
// photo, so each call reads many photos. A program that is missing or fails makes the test fail.
#pragma once

#include "exif/tag/ExifListKind.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <map>
#include <utility>

namespace lumi::test {

class PhotoFolder;

/// The list of a tag and its number.
using TagPlace = std::pair<ExifListKind, int>;

struct ForeignTag
{
    QString type;
    quint32 count = 0;
    QString value;

    friend bool operator==(const ForeignTag &, const ForeignTag &) = default;
};

using Exiv2Tags = std::map<TagPlace, ForeignTag>;

/// All Exif tags of each photo as exiv2 prints them: type, count, raw value.
[[nodiscard]] std::map<QString, Exiv2Tags> exiv2Tags(const QStringList &paths);
[[nodiscard]] Exiv2Tags exiv2Tags(const QString &path);

using ExiftoolTags = std::map<TagPlace, QVariant>;

/// The raw values of the tags of each photo as exiftool prints them, without its composite tags.
[[nodiscard]] std::map<QString, ExiftoolTags> exiftoolTags(const QStringList &paths);

/// The thumbnail of each photo in which exiftool finds one.
[[nodiscard]] std::map<QString, QByteArray> exiftoolThumbnails(const QStringList &paths);

/// The photos that exiftool reads without a warning.
[[nodiscard]] QStringList soundPhotos(const QStringList &paths);

/// The name that exiv2 has for a type.
[[nodiscard]] QString exiv2Type(int type);

/// A photo with an Exif segment written by exiftool. order: "II" or "MM".
[[nodiscard]] QString exiftoolPhoto(PhotoFolder &folder, const QString &order);

} // namespace lumi::test
