// SPDX-License-Identifier: MIT
// The walking reader: hands out the tags of a photo's Exif block one per call, whatever
// directory they stand in, with the first value of each. The sub-directories that are named
// on the way are walked after those already noted, five in all.
// Format: only an APP1 segment that follows the start of the image directly counts; no later
// one is tried. Texts and untyped bytes are taken from what the window holds.
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
    ~FPVExifFile() override;

    /// Opens path and enters its first directory. False, closed again, when the file has no
    /// Exif block at its start.
    [[nodiscard]] bool open(const QString &path) override;

    /// The next tag, a new object for the caller. Null at the end, when the file closes
    /// itself, and for an entry of an unknown type, which ends a caller's walk as well.
    [[nodiscard]] FPVExifTag *nextTag();

private:
    struct Ifd
    {
        quint32 offset = 0; // from m_tiffBase; 0 marks a free record
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
