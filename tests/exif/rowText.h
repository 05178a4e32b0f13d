// SPDX-License-Identifier: MIT
// Shared by the tests of value texts: writes a photo and reads the text of a row.
#pragma once

#include "exif/text/FPVExifFields.h"
#include "tests/exif/PhotoFolder.h"

#include <array>

namespace lumi::test {

inline constexpr std::array<ExifBuilder::Order, 2> kBothOrders
    = {ExifBuilder::Order::Little, ExifBuilder::Order::Big};

/// The text of a row of the photo.
[[nodiscard]] inline QString rowText(PhotoFolder &folder, const ExifBuilder &photo, int group,
                                     int row, bool withUnit = true)
{
    FPVExifFields fields(folder.put(photo));
    fields.setGroup(group);
    return fields.isValid() ? fields.valueText(row, withUnit) : QStringLiteral("no valid photo");
}

} // namespace lumi::test
