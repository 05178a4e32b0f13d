// SPDX-License-Identifier: MIT
// Copies of a photo's Exif block, to compare it before and after a rewrite.
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

/// All five lists in the order of their kinds. Pointer tags have no value here, because every
/// rewrite changes it.
[[nodiscard]] QList<ListCopy> valuesOf(const FPVExifDocument &document);

/// All bytes of the file; empty if there is none.
[[nodiscard]] QByteArray contentOf(const QString &path);

/// The bytes behind the first segment of the file. Does not use the reader.
[[nodiscard]] QByteArray restOf(const QByteArray &file);

/// The bytes at the thumbnail offset of the document.
[[nodiscard]] QByteArray thumbnailBytes(FPVExifDocument &document);

/// The numbers as bytes in host order.
template <class Number> [[nodiscard]] QByteArray hostBytes(std::initializer_list<Number> numbers)
{
    return QByteArray(reinterpret_cast<const char *>(numbers.begin()),
                      static_cast<qsizetype>(numbers.size() * sizeof(Number)));
}

} // namespace lumi::test
