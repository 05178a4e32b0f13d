// SPDX-License-Identifier: MIT
#include "exif/directoryKind.h"

#include "exif/tagNumbers.h"
#include "exif/typeSize.h"

namespace {

constexpr int kLastGpsTag = 0x001F;
constexpr int kFirstExifTag = lumi::kTagExposureTime;
constexpr int kUndefined = 7;

/// The two numbers that it has in common with the GPS directory: a name of three letters where
/// that has one letter, and a version where that has fractions.
bool isOfInteroperability(int tag, int type, quint32 count, char second)
{
    constexpr int kName = 0x0001;
    constexpr int kVersion = 0x0002;
    constexpr quint32 kNameLength = 4;
    return (tag == kName && count == kNameLength && second != '\0')
        || (tag == kVersion && type == kUndefined);
}

} // namespace

std::optional<ExifListKind> lumi::directoryKind(int tag, int type, quint32 count, char second)
{
    if (typeSize(type) == 0) {
        return std::nullopt;
    }
    if (isOfInteroperability(tag, type, count, second)) {
        return ExifListKind::Interoperability;
    }
    if (tag <= kLastGpsTag) {
        return ExifListKind::Gps;
    }
    return tag < kFirstExifTag ? ExifListKind::Ifd1 : ExifListKind::Exif;
}
