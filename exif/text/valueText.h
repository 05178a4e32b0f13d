// SPDX-License-Identifier: MIT
// A value as the text that the user sees. The stored type decides first and the tag number
// second: a value of a type that its tag does not normally have gets the text of that type, or
// none. All functions give a null string for a value that has no text, and take any bytes.
#pragma once

#include "exif/tag/FPVExifTagBytes.h"
#include "exif/text/exifFieldGroups.h"

class FPVExifDocument;

namespace lumi {

/// A value with what else its text depends on. All of it is lent.
struct ShownValue
{
    const FPVExifTagBytes &tag;
    const ExifFieldRow &row;
    const FPVExifDocument &document; // a position needs the tag beside its own
    bool withUnit;                   // of an altitude; all other units are always there
};

[[nodiscard]] QString valueText(const ShownValue &value);

/// The same for one stored type: BYTE, SHORT and LONG; ASCII; RATIONAL; SRATIONAL.
[[nodiscard]] QString numberValueText(const ShownValue &value);
[[nodiscard]] QString asciiValueText(const ShownValue &value);
[[nodiscard]] QString rationalValueText(const ShownValue &value);
[[nodiscard]] QString signedRationalValueText(const ShownValue &value);

} // namespace lumi
