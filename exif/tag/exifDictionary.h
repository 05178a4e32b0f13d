// SPDX-License-Identifier: MIT
// The tag dictionary: number, name and display format. The first row of a number wins; later rows
// of the same number are never used.
#pragma once

#include <QString>

#include <span>

struct ExifTagNameRow
{
    quint16 tag = 0;
    const char *name = nullptr;   // EUC-JP in the Japanese rows
    const char *format = nullptr; // %d or %s for each value; null: the default of the tag class
};

/// The name of the first row with that number, its bytes read as Latin-1. A null string if there is
/// no such row, and for 0, the number of the closing row.
[[nodiscard]] QString tagName(int tag);

/// The first format of that number, or fallback if it has none.
[[nodiscard]] QString tagFormat(int tag, const QString &fallback);

namespace lumi {

/// All rows, including the closing one, which has tag 0 and a null name.
[[nodiscard]] std::span<const ExifTagNameRow> exifTagNames();

} // namespace lumi
