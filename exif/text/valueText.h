// SPDX-License-Identifier: MIT
// A value as the text that the user sees. The stored type selects the function, then the tag number
// selects the format. So a value of a type that is unusual for its tag has the text of that type,
// or none. All functions accept any bytes and return a null string for a value without a text.
#pragma once

#include "exif/tag/FPVExifTagBytes.h"
#include "exif/text/exifFieldGroups.h"

class FPVExifDocument;

namespace lumi {

/// A value and the other data that its text depends on.
struct ShownValue
{
    const FPVExifTagBytes &tag;
    const ExifFieldRow &row;
    const FPVExifDocument &document; // has the reference tags of positions
    bool withUnit;                   // for altitudes; other values always have their unit
};

[[nodiscard]] QString valueText(const ShownValue &value);

// The same for BYTE, SHORT and LONG; ASCII; RATIONAL; SRATIONAL.
[[nodiscard]] QString numberValueText(const ShownValue &value);
[[nodiscard]] QString asciiValueText(const ShownValue &value);
[[nodiscard]] QString rationalValueText(const ShownValue &value);
[[nodiscard]] QString signedRationalValueText(const ShownValue &value);

} // namespace lumi
