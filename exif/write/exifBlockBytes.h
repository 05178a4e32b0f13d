// SPDX-License-Identifier: MIT
// Makes the start of a photo from the lists of an Exif block. The layout is always new, and the
// byte order little-endian.
// Format: start of image, segment header, TIFF header, IFD0, Exif, interoperability, GPS, IFD1,
// thumbnail. Values that do not fit an entry follow their directory. The link of a non-empty IFD0
// is the offset behind the GPS directory, even if there is no IFD1. Tags keep their order. Offsets
// inside a maker note are not changed and go stale.
#pragma once

#include "exif/tag/ExifTagList.h"

#include <QByteArray>

namespace lumi {

/// The lists to be written. Their pointer tags are changed.
struct ExifLists
{
    ExifTagList &ifd0;
    ExifTagList &exif;
    ExifTagList &interoperability;
    ExifTagList &gps;
    ExifTagList &ifd1;
};

/// The size of a directory with its values; 0 without tags.
[[nodiscard]] quint32 ifdSize(const ExifTagList &list);

/// A directory with its values, to be placed at offset; empty without tags. The link is 0.
[[nodiscard]] QByteArray ifdBytes(const ExifTagList &list, quint32 offset);

/// IFD0, Exif, interoperability and GPS directory, to be placed behind the TIFF header.
[[nodiscard]] QByteArray mainBlock(const ExifLists &lists);

/// The new photo up to the thumbnail. The length field of the segment includes the thumbnail and a
/// padding byte if the sum is odd; it has 16 bits and wraps. If thumbnailLength is 0, there is no
/// thumbnail and IFD1 is written as it is.
[[nodiscard]] QByteArray photoStart(const ExifLists &lists, quint32 thumbnailLength);

} // namespace lumi
