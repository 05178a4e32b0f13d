// SPDX-License-Identifier: MIT
// The constants of the Exif segment of a JPEG file and of the TIFF structure inside it. The tags
// are in tagNumbers.h.
#pragma once

#include <QtGlobal>

#include <array>

namespace lumi {

/// The types of values that have a size.
enum TiffType : quint16 {
    TiffByte = 1,
    TiffAscii = 2,
    TiffShort = 3,
    TiffLong = 4,
    TiffRational = 5,
    TiffUndefined = 7,
    TiffSignedLong = 9,
    TiffSignedRational = 10,
};

// The file begins with the start of image, the marker and length of the segment, and its mark.
inline constexpr char kStartOfImage[] = "\xFF\xD8";
inline constexpr char kApp1Marker[] = "\xFF\xE1";
inline constexpr char kExifMark[6] = {'E', 'x', 'i', 'f', '\0', '\0'};

/// The position of the segment's length field in the file. The length counts from here.
inline constexpr int kSegmentLengthPlace = 4;
/// The position of the TIFF header in the file. All offsets count from here.
inline constexpr int kTiffBase = 12;

inline constexpr int kTiffHeaderSize = 8; // byte order, check number, offset of the first directory

// A directory is the number of its entries, the entries and the link to the next directory.
inline constexpr int kEntryCountSize = 2;
inline constexpr int kEntrySize = 12;
inline constexpr int kLinkSize = 4;
inline constexpr int kBareDirectorySize = kEntryCountSize + kLinkSize;

// An entry is tag, type, count and value. A value that does not fit has its offset there.
inline constexpr int kTypePlace = 2;
inline constexpr int kCountPlace = 4;
inline constexpr int kValuePlace = 8;
inline constexpr int kInlineValueSize = 4;

/// The largest value of the 16-bit length field.
inline constexpr int kLongestSegment = 65535;

// The most bytes that a reader keeps of one value, and of all values of a photo.
inline constexpr int kLargestValue = 65535;
inline constexpr int kLargestValueSum = 1024 * 1024;

} // namespace lumi

/// Bytes of one value of a type, 0 for a type without a size (0, 6, 8 and all above 10).
[[nodiscard]] constexpr int typeSize(int type)
{
    constexpr std::array<int, 11> kSizes = {0, 1, 1, 2, 4, 8, 0, 1, 0, 4, 8};
    const auto index = static_cast<std::size_t>(type);
    return index < kSizes.size() ? kSizes[index] : 0;
}
