// SPDX-License-Identifier: MIT
// What a photo's block held at one moment, for comparing before and after it is written anew.
#pragma once

#include "exif/read/FPVExifDocument.h"

#include <QByteArray>
#include <QImage>
#include <QList>

namespace lumi::test {

struct TagCopy
{
    int tag = 0;
    int type = 0;
    quint32 count = 0;
    QByteArray bytes;

    friend bool operator==(const TagCopy &, const TagCopy &) = default;
};

using ListCopy = QList<TagCopy>;

inline constexpr ExifListKind kAllLists[]
    = {ExifListKind::Ifd0, ExifListKind::Exif, ExifListKind::Interoperability, ExifListKind::Gps,
       ExifListKind::Ifd1};

[[nodiscard]] ListCopy copyOf(const ExifTagList &list);

/// All five lists in the order of their kinds, with the values of the tags that say where
/// things stand left out: those are new in every file.
[[nodiscard]] QList<ListCopy> valuesOf(const FPVExifDocument &document);

/// All bytes of the file; empty when there is none.
[[nodiscard]] QByteArray contentOf(const QString &path);

/// The bytes behind the file's first segment, found without the reader.
[[nodiscard]] QByteArray restOf(const QByteArray &file);

/// The bytes of the thumbnail as the document says where they are.
[[nodiscard]] QByteArray thumbnailBytes(FPVExifDocument &document);

/// The numbers of this machine as bytes.
template <class Number> [[nodiscard]] QByteArray hostBytes(std::initializer_list<Number> numbers)
{
    return QByteArray(reinterpret_cast<const char *>(numbers.begin()),
                      static_cast<qsizetype>(numbers.size() * sizeof(Number)));
}

} // namespace lumi::test
