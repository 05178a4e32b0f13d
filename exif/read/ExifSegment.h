// SPDX-License-Identifier: MIT
// The Exif segment of a photo in memory, and the one place where its bytes become tags. Every
// size and place in it comes from the file and is not to be trusted.
// Format: "Exif" segment right behind the start of the image. Directories end where the
// segment ends: what would lie behind reads as zero, because links are known to point there.
// A value may lie anywhere in the file; bytes that the file does not have are zero.
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
    /// The file is lent for the life of the segment, open for reading and at its start.
    explicit ExifSegment(QIODevice &file);

    /// Takes the header apart and reads the segment. False when the file does not begin with
    /// an Exif segment or cannot be read.
    [[nodiscard]] bool load();

    /// Puts the directory at offset into list, and the link behind it into link. Entries of
    /// unknown types and too large values are passed over. False on a read error only.
    [[nodiscard]] bool readIfd(quint32 offset, ExifTagList &list, quint32 &link);

    /// Whether a pointer to offset leads to a directory of that kind. A pointer can outlive its
    /// directory and then leads to other bytes. A directory counts if all its entries lie in the
    /// segment and it was not read before under another name. A GPS directory also has to begin
    /// with a GPS tag, because its pointer is the one that gets left over in ordinary use.
    /// 0 never counts: read as a count, the byte order mark is more than a segment holds.
    [[nodiscard]] bool holdsIfd(quint32 offset, ExifListKind kind) const;

    [[nodiscard]] bool isLittleEndian() const { return m_littleEndian; }

    /// Where offsets count from, in bytes from the start of the file; 0 before load().
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
    /// Fills target from where the file stands. The end of the file is no error; the bytes
    /// behind it stay as they are. Bytes that the file has but does not give are one.
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
