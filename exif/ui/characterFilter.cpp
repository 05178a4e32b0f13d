// SPDX-License-Identifier: MIT
#include "exif/ui/characterFilter.h"

#include <QString>

#include <algorithm>
#include <iterator>

namespace {

/// The range includes first and last.
struct RangeRow
{
    int bit;
    char16_t first;
    char16_t last;
};

constexpr RangeRow kRanges[] = {
    {0x01, 0, 31},                                              // all but single-byte ones
    {0x01, 127, 65376},                                         //
    {0x01, 65440, 65535}, {0x02, 32, 126},                      // the single-byte ones
    {0x02, 65377, 65439}, {0x04, 19968, 40959},                 // kanji
    {0x08, 12353, 12446},                                       // hiragana
    {0x10, 65382, 65439},                                       // katakana, then half-width signs
    {0x10, 12449, 12542}, {0x10, 65377, 65381}, {0x20, 48, 57}, // digits
    {0x20, 65296, 65305}, {0x40, 65, 90},                       // letters
    {0x40, 97, 122},      {0x40, 65313, 65338}, {0x40, 65345, 65370},
};

bool isRemoved(QChar character, int mask)
{
    const char16_t code = character.unicode();
    return std::any_of(std::begin(kRanges), std::end(kRanges), [code, mask](const RangeRow &row) {
        return (mask & row.bit) == 0 && code >= row.first && code <= row.last;
    });
}

} // namespace

QString lumi::filterCharacters(const QString &text, int mask)
{
    QString kept;
    kept.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), [mask](QChar character) {
        return !isRemoved(character, mask);
    });
    return kept;
}
