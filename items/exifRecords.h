// SPDX-License-Identifier: MIT
// The information records of a photo that come from its Exif tags.
#pragma once

#include "exif/tag/ExifTagList.h"
#include "items/FPVItemObject.h"

namespace lumi {

/// Appends a record with one line per tag for each group of kExifInfoGroups that occurs in tags.
/// The first group is left out: its record comes from other sources.
void appendExifRecords(const ExifTagList &tags, QList<InfoRecord> *records);

} // namespace lumi
