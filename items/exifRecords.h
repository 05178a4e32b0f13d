// SPDX-License-Identifier: MIT
// The information records of a photo that its Exif tags give.
#pragma once

#include "exif/tag/ExifTagList.h"
#include "items/FPVItemObject.h"

namespace lumi {

/// Appends a record for each group of kExifInfoGroups of which tags has any, a line per tag,
/// but for the first group, whose record comes from other sources.
void appendExifRecords(const ExifTagList &tags, QList<InfoRecord> *records);

} // namespace lumi
