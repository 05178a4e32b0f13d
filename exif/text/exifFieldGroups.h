// SPDX-License-Identifier: MIT
// What the info panel and the Exif editor show: six groups of rows, each a label, a tag and
// the list it is looked up in. All rows are shown; only rows that are not read-only can be
// edited. The tables are built at first use, since their texts come from the catalogue.
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

/// The six groups, lent for the life of the process.
[[nodiscard]] std::span<const ExifFieldGroup> exifFieldGroups();

} // namespace lumi
