// SPDX-License-Identifier: MIT
// What tests of value texts share: a photo of few tags, read back as the row of a group.
#pragma once

#include "exif/text/FPVExifFields.h"
#include "tests/exif/PhotoFolder.h"

#include <array>

namespace lumi::test {

inline constexpr std::array<ExifBuilder::Order, 2> kBothOrders
    = {ExifBuilder::Order::Little, ExifBuilder::Order::Big};

/// The text of one row of a photo.
[[nodiscard]] inline QString rowText(PhotoFolder &folder, const ExifBuilder &photo, int group,
                                     int row, bool withUnit = true)
{
    FPVExifFields fields(folder.put(photo));
    fields.setGroup(group);
    return fields.isValid() ? fields.valueText(row, withUnit) : QStringLiteral("no valid photo");
}

} // namespace lumi::test
