// SPDX-License-Identifier: MIT
// The whole Exif block of a photo: five lists with every value of every tag, to be shown, edited
// and written again. Only an APP1 segment that directly follows the start of image counts. Values
// above kLargestValue, and those that would exceed kLargestValueSum in all, are skipped. The first
// directory is read as it is; ExifSegment::holdsIfd() says which others count.
// Owns: the tags, and the file, which stays open because thumbnail and writer read from it again.
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
    /// Reads the block. If that fails, the file is closed again and isValid() is false.
    explicit FPVExifDocument(const QString &path);

    [[nodiscard]] bool isValid() const { return m_valid; }

    [[nodiscard]] bool hasThumbnail() const;

    /// The embedded thumbnail, a new image that the caller owns. Null if there is none, if it is
    /// cut off by the end of the file, or if embeddedPicture() refuses it.
    [[nodiscard]] QImage *thumbnail();

    /// The same for the photo at path.
    [[nodiscard]] static QImage *thumbnail(const QString &path);

    /// The first tag of that number; null if the list has none.
    [[nodiscard]] FPVExifTag *find(int number, const lumi::ExifTagList &list) const;
    [[nodiscard]] FPVExifTag *find(int number, ExifListKind kind) const;

    /// A number outside ExifListKind means the first list.
    [[nodiscard]] const lumi::ExifTagList &list(ExifListKind kind) const;

    [[nodiscard]] const lumi::ExifTagList &ifd0List() const { return m_ifd0; }

    [[nodiscard]] const lumi::ExifTagList &exifList() const { return m_exif; }

    [[nodiscard]] const lumi::ExifTagList &gpsList() const { return m_gps; }

    [[nodiscard]] bool hasExifIfd() const { return !m_exif.isEmpty(); }

    [[nodiscard]] bool hasGpsIfd() const { return !m_gps.isEmpty(); }

    /// The byte order of the file. The values of the tags are in host order.
    [[nodiscard]] bool littleEndian() const { return m_littleEndian != 0; }

    /// The place in the file that offsets count from.
    [[nodiscard]] int tiffBase() const { return m_tiffBase; }

    /// The length field of the segment. The segment ends at this + 4.
    [[nodiscard]] int app1Length() const { return m_app1Length; }

    [[nodiscard]] quint32 ifd0Offset() const { return m_ifd0Offset; }

    [[nodiscard]] quint32 ifd1Offset() const { return m_ifd1Offset; }

    /// ifd1Offset() minus ifd0Offset(). Wraps to 32 bits if there is no second directory.
    [[nodiscard]] quint32 ifd0Span() const { return m_ifd0Span; }

    [[nodiscard]] quint32 nextIfdOffset() const { return m_nextIfdOffset; }

    [[nodiscard]] quint32 thumbnailOffset() const { return m_thumbnailOffset; }

    [[nodiscard]] quint32 thumbnailLength() const { return m_thumbnailLength; }

protected:
    /// list() for subclasses that change it.
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
