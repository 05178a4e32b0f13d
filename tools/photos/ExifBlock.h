// SPDX-License-Identifier: MIT
// Writes the Exif block of a sample photo the way a camera of the years the photos pretend
// to come from did. It stands apart from the program's own Exif code on purpose: sample
// photos must not agree with a mistake made there.
// Format: "Exif", two NULs, then a TIFF structure in either byte order with the lists IFD0,
// Exif, GPS and, for an embedded thumbnail, IFD1.
#pragma once

#include <QByteArray>
#include <QSize>

namespace lumi::photos {

struct ExifFacts
{
    QByteArray make;
    QByteArray model;
    QByteArray dateTaken; ///< "2004:07:12 09:30:00"
    QByteArray comment;   ///< ASCII; empty for none
    QSize size;
    bool bigEndian = false;
    bool flash = false;
    bool gps = false;
    double latitude = 0.0;             ///< degrees, south negative
    double longitude = 0.0;            ///< degrees, west negative
    double altitude = 0.0;             ///< metres
    quint32 exposureDenominator = 125; ///< 1/n second
    quint32 apertureTenths = 28;
    quint16 iso = 100;
    quint32 focalTenths = 78; ///< millimetres x 10
};

/// The payload of the APP1 segment. thumbnail: a JPEG stream, or empty for none. Empty if
/// the block would not fit a segment.
[[nodiscard]] QByteArray exifBlock(const ExifFacts &facts, const QByteArray &thumbnail);

} // namespace lumi::photos
