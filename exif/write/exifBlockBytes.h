// SPDX-License-Identifier: MIT
// Turns the lists of an Exif block into the bytes of a photo's start. The block is always laid
// out anew and little-endian, and nothing of where things stood before is kept.
// Format: start of image, segment header, TIFF header, IFD0, Exif, interoperability, GPS, IFD1,
// thumbnail; each directory is followed by those of its values that do not fit an entry. The
// link of an IFD0 with tags says where IFD1 would stand, even when there is none. Tags keep their
// order. What a maker note says about places is not understood and goes stale.
#pragma once

#include "exif/tag/ExifTagList.h"

#include <QByteArray>

namespace lumi {

/// The lists to be written, lent. Tags that say where a directory stands are set in them.
struct ExifLists
{
    ExifTagList &ifd0;
    ExifTagList &exif;
    ExifTagList &interoperability;
    ExifTagList &gps;
    ExifTagList &ifd1;
};

/// The bytes of a directory and its values; 0 without tags.
[[nodiscard]] quint32 ifdSize(const ExifTagList &list);

/// A directory and its values as they stand at offset, with a zero link; empty without tags.
[[nodiscard]] QByteArray ifdBytes(const ExifTagList &list, quint32 offset);

/// IFD0, Exif, interoperability and GPS directory as they stand right behind the TIFF header.
[[nodiscard]] QByteArray mainBlock(const ExifLists &lists);

/// The new photo from its first byte up to where the thumbnail begins. The length of the
/// segment counts the thumbnail and, when that leaves an odd sum, one byte behind it; it is a
/// 16-bit field and wraps. thumbnailLength: 0 for none, IFD1 is then written as it is.
[[nodiscard]] QByteArray photoStart(const ExifLists &lists, quint32 thumbnailLength);

} // namespace lumi
