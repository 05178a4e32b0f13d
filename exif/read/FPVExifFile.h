// SPDX-License-Identifier: MIT
// The walking reader: returns the tags of a photo's Exif block one per call, with the first value
// of each. Walks the first directory, then the sub-directories in the order in which it meets their
// pointers, at most five directories in all.
// Format: only an APP1 segment that directly follows the start of image counts. Texts and untyped
// bytes end where the window of FPVFile ends.
#pragma once

#include "exif/read/FPVFile.h"
#include "exif/tag/FPVExifTag.h"

#include <QByteArray>

#include <array>
#include <memory>

/// The numbers differ from those of ExifListKind.
enum class ExifIfdKind : int {
    Primary = 0,
    Thumbnail = 1,
    Exif = 2,
    Gps = 3,
    Interoperability = 4,
    Further = 5,
};

class FPVExifFile : public FPVFile
{
public:
    explicit FPVExifFile(const QString &path);

    /// Opens path and enters its first directory. False, and closed again, if the file does not
    /// begin with an Exif block.
    [[nodiscard]] bool open(const QString &path) override;

    /// The next tag, a new object that the caller owns. Null at the end, where the file closes
    /// itself, and for an entry of an unknown type. Callers stop at the first null.
    [[nodiscard]] FPVExifTag *nextTag();

private:
    struct Ifd
    {
        quint32 offset = 0; // from m_tiffBase; 0 if the record is free
        int count = 0;      // entries, -1 until the directory is entered
        ExifIfdKind kind = ExifIfdKind::Primary;
    };

    struct Entry
    {
        quint16 tag;
        quint16 type;
        quint32 count;
    };

    [[nodiscard]] bool readHeader(const QByteArray &path);
    int addIfd(quint32 offset, ExifIfdKind kind);
    [[nodiscard]] bool enterIfd(int index);
    void finishEntry();
    void noteSubIfd(const FPVExifTag &tag);
    [[nodiscard]] std::unique_ptr<FPVExifTag> decode(const Entry &entry);
    [[nodiscard]] std::unique_ptr<FPVExifTag> decodeRational(const Entry &entry);
    [[nodiscard]] std::unique_ptr<FPVExifTag> decodeText(const Entry &entry);
    [[nodiscard]] std::unique_ptr<FPVExifTag> decodeBytes(const Entry &entry);
    void followOffset(const Entry &entry);

    int m_segmentStart = 0;
    int m_tiffBase = 0;
    int m_segmentLength = 0;
    int m_currentIfd = 0;
    int m_currentEntry = 0;
    std::array<Ifd, 5> m_ifds;
    int m_valueRoom = 0; // bytes of texts and untyped values still allowed
};
