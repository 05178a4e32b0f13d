// SPDX-License-Identifier: MIT
// The tag dictionary: number, name and display format. It is searched from the top and the
// first row of a number wins, so a later row of the same number is never seen.
#pragma once

#include <QString>

#include <span>

struct ExifTagNameRow
{
    quint16 tag = 0;
    const char *name = nullptr;   // the bytes as they are passed on, EUC-JP in the Japanese rows
    const char *format = nullptr; // %d or %s once per value; null: the default of the tag class
};

/// The name of the first row with that number, each byte as one Latin-1 character; a null
/// string without such a row and for 0, which ends the search.
[[nodiscard]] QString tagName(int tag);

/// The format of the first row with that number that has one, else fallback.
[[nodiscard]] QString tagFormat(int tag, const QString &fallback);

namespace lumi {

/// All rows, the closing one with tag 0 and a null name included.
[[nodiscard]] std::span<const ExifTagNameRow> exifTagNames();

} // namespace lumi
