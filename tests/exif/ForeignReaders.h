// SPDX-License-Identifier: MIT
// What independent programs read of photos, and write. They take much longer to start than to
// read a photo, so each is asked once for many. Both must be installed; one that is missing or
// fails makes the test fail.
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

/// Every tag of each photo's block as exiv2 prints it: type, count, raw value.
[[nodiscard]] std::map<QString, Exiv2Tags> exiv2Tags(const QStringList &paths);
[[nodiscard]] Exiv2Tags exiv2Tags(const QString &path);

using ExiftoolTags = std::map<TagPlace, QVariant>;

/// The plain values of the tags of each photo as exiftool gives them. Values that it puts
/// together itself are left out.
[[nodiscard]] std::map<QString, ExiftoolTags> exiftoolTags(const QStringList &paths);

/// The thumbnail of each photo that has one for exiftool.
[[nodiscard]] std::map<QString, QByteArray> exiftoolThumbnails(const QStringList &paths);

/// The photos of which exiftool has no complaint.
[[nodiscard]] QStringList soundPhotos(const QStringList &paths);

/// exiv2's names of the types by number.
[[nodiscard]] QString exiv2Type(int type);

/// A photo whose Exif segment follows its start, written by exiftool. order: "II" or "MM".
[[nodiscard]] QString exiftoolPhoto(PhotoFolder &folder, const QString &order);

} // namespace lumi::test
