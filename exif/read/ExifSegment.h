// SPDX-License-Identifier: MIT
// The Exif segment of a photo in memory. Makes tags of its bytes. Every size and offset in it comes
// from the file and cannot be trusted.
// Format: the segment directly follows the start of image. Bytes of a directory behind the end of
// the segment read as 0, because links of real photos point there. A value may stand anywhere in
// the file; bytes behind the end of the file read as 0.
#pragma once

#include "exif/tag/ExifListKind.h"
#include "exif/tag/ExifTagList.h"

#include <QByteArray>

#include <span>
#include <vector>

class QIODevice;

namespace lumi {

class ExifSegment
{
public:
    /// The file must be open for reading, at its start, and live as long as the segment.
    explicit ExifSegment(QIODevice &file);

    /// Reads the segment. False if the file does not begin with an Exif segment or cannot be read.
    [[nodiscard]] bool load();

    /// Reads the directory at offset into list and its link into link. Skips entries of unknown
    /// types and too large values. False on a read error only.
    [[nodiscard]] bool readIfd(quint32 offset, ExifTagList &list, quint32 &link);

    /// Whether there is a directory of that kind at offset. A pointer can outlive its directory and
    /// then points to other bytes. A directory counts if all its entries lie in the segment and it
    /// was not read before as another kind. A GPS directory must also begin with a GPS tag, because
    /// its pointer is the one that goes stale in ordinary use. Offset 0 never counts: the byte
    /// order mark, read as a number of entries, is more than a segment holds.
    [[nodiscard]] bool holdsIfd(quint32 offset, ExifListKind kind) const;

    [[nodiscard]] bool isLittleEndian() const { return m_littleEndian; }

    /// The place in the file that offsets count from; 0 before load().
    [[nodiscard]] int tiffBase() const { return m_tiffBase; }

    /// The length field of the segment.
    [[nodiscard]] int app1Length() const { return m_app1Length; }

    [[nodiscard]] quint32 ifd0Offset() const { return m_ifd0Offset; }

private:
    [[nodiscard]] bool loadHeader();
    [[nodiscard]] bool isGpsTag(qint64 entry) const;
    [[nodiscard]] bool readEntry(qint64 entry, ExifTagList &list);
    [[nodiscard]] bool readValue(qint64 word);
    [[nodiscard]] bool readFar(qint64 place);
    /// Fills target from the current position of the file. Bytes behind the end of the file stay
    /// as they are; that is no error.
    [[nodiscard]] bool readHere(std::span<char> target);
    [[nodiscard]] char byteAt(qint64 offset) const;
    [[nodiscard]] quint16 u16(qint64 offset) const;
    [[nodiscard]] quint32 u32(qint64 offset) const;

    QIODevice &m_file;
    bool m_littleEndian = true;
    int m_tiffBase = 0;
    int m_app1Length = 0;
    quint32 m_ifd0Offset = 0;
    QByteArray m_bytes; // from the TIFF header to the end of the segment
    std::vector<quint32> m_readPlaces;
    std::vector<char> m_value; // the value being read
    qint64 m_room;             // bytes of values that may still be held
};

} // namespace lumi
