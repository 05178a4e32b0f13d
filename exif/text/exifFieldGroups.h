// SPDX-License-Identifier: MIT
// What the info panel and the Exif editor show: six groups of rows, each with a label, a tag and
// the list of the tag. The panel shows all rows; the editor has those that are not read-only. The
// tables are built at first use, because their texts come from the catalogue.
#pragma once

#include "exif/tag/ExifListKind.h"

#include <QString>

#include <span>

struct ExifFieldRow
{
    QString label;
    int tag = 0;
    bool readOnly = true;
    ExifListKind list = ExifListKind::Ifd0;
};

struct ExifFieldGroup
{
    QString title;
    const ExifFieldRow *rows = nullptr;
    int rowCount = 0;
};

namespace lumi {

/// The six groups.
[[nodiscard]] std::span<const ExifFieldGroup> exifFieldGroups();

} // namespace lumi
