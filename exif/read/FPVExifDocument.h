// SPDX-License-Identifier: MIT
// The whole Exif block of a photo, read at once into five lists with every value of every
// tag, so that it can be shown, edited and written again. Only an APP1 segment that follows
// the start of the image directly counts. Bytes of a directory behind the segment are 0, and so
// are bytes of a value behind the file. A value of more than 65535 bytes, or beyond 1 MB in all,
// is passed over. The first directory is read as it is; ExifSegment says which others count.
// Owns: the tags; the file, which stays open for thumbnail and writer to read from it again.
// Format: the segment is read once and taken apart in memory, values outside it one by one.
#pragma once

#include "exif/tag/ExifListKind.h"
#include "exif/tag/ExifTagList.h"

#include <QFile>

class QImage;

namespace lumi {
class ExifSegment;
} // namespace lumi

class FPVExifDocument : public QFile
{
public:
    /// Reads the block; when it cannot be read the file is closed again and isValid() false.
    explicit FPVExifDocument(const QString &path);
    ~FPVExifDocument() override;

    [[nodiscard]] bool isValid() const { return m_valid; }

    [[nodiscard]] bool hasThumbnail() const;

    /// The embedded thumbnail, a new image for the caller. Null without one, when it does not
    /// lie wholly in the file, or when its bytes are no picture of a thumbnail's size.
    [[nodiscard]] QImage *thumbnail();

    /// The same for the photo at path.
    [[nodiscard]] static QImage *thumbnail(const QString &path);

    /// The first tag of that number, lent; null when the list has none.
    [[nodiscard]] FPVExifTag *find(int number, const lumi::ExifTagList &list) const;
    [[nodiscard]] FPVExifTag *find(int number, ExifListKind kind) const;

    /// A number outside ExifListKind means the first list.
    [[nodiscard]] const lumi::ExifTagList &list(ExifListKind kind) const;

    [[nodiscard]] const lumi::ExifTagList &ifd0List() const { return m_ifd0; }

    [[nodiscard]] const lumi::ExifTagList &exifList() const { return m_exif; }

    [[nodiscard]] const lumi::ExifTagList &gpsList() const { return m_gps; }

    [[nodiscard]] bool hasExifIfd() const { return !m_exif.isEmpty(); }

    [[nodiscard]] bool hasGpsIfd() const { return !m_gps.isEmpty(); }

    /// The byte order of the file; values are in host order all the same.
    [[nodiscard]] bool littleEndian() const { return m_littleEndian != 0; }

    /// Where the offsets of the block count from, in bytes from the start of the file.
    [[nodiscard]] int tiffBase() const { return m_tiffBase; }

    /// The segment's length field: the segment ends at this + 4.
    [[nodiscard]] int app1Length() const { return m_app1Length; }

    [[nodiscard]] quint32 ifd0Offset() const { return m_ifd0Offset; }

    [[nodiscard]] quint32 ifd1Offset() const { return m_ifd1Offset; }

    /// ifd1Offset() less ifd0Offset(), wrapped to 32 bits when there is no second directory.
    [[nodiscard]] quint32 ifd0Span() const { return m_ifd0Span; }

    [[nodiscard]] quint32 nextIfdOffset() const { return m_nextIfdOffset; }

    [[nodiscard]] quint32 thumbnailOffset() const { return m_thumbnailOffset; }

    [[nodiscard]] quint32 thumbnailLength() const { return m_thumbnailLength; }

protected:
    /// The list itself, for those who change it; it belongs to the document. Which list a
    /// number means is as for list().
    [[nodiscard]] lumi::ExifTagList &editableList(ExifListKind kind);

private:
    using ListMember = lumi::ExifTagList FPVExifDocument::*;

    [[nodiscard]] static ListMember listAt(ExifListKind kind);
    [[nodiscard]] bool readAll();
    [[nodiscard]] bool readPointed(lumi::ExifSegment &segment);
    [[nodiscard]] bool readOne(lumi::ExifSegment &segment, quint32 offset, ExifListKind kind,
                               quint32 &link);

    quint8 m_littleEndian = 1;
    int m_tiffBase = 0;
    int m_app1Length = 0;
    quint32 m_ifd0Offset = 0;
    lumi::ExifTagList m_ifd0;
    lumi::ExifTagList m_exif;
    lumi::ExifTagList m_interoperability;
    lumi::ExifTagList m_gps;
    quint32 m_ifd1Offset = 0;
    quint32 m_ifd0Span = 0;
    lumi::ExifTagList m_ifd1;
    quint32 m_nextIfdOffset = 0;
    quint32 m_thumbnailOffset = 0;
    quint32 m_thumbnailLength = 0;
    bool m_valid = false;
};
