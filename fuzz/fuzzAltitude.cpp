// SPDX-License-Identifier: MIT
// Altitudes of arbitrary text: an accepted text has a fraction with the digits of the text, and the
// text of that fraction must be accepted again. Altitudes of arbitrary fractions must be valid or
// empty.
#include "exif/gps/Altitude.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text
        = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    Altitude value;
    const bool isValid = value.setText(text);
    if (isValid != altitudeValid(text) || isValid == value.text().isEmpty()) {
        std::abort();
    }
    if (const lumi::Rational *stored = value.rational()) {
        Altitude other;
        other.fromRational(value.aboveSeaLevel(), *stored);
        const bool fits = other.whole() == value.whole() && other.fraction() == value.fraction();
        // The text can become too long only by the dot and zero that are added.
        if (other.text().isEmpty() ? text.size() < 8 : !fits) {
            std::abort();
        }
    }
    lumi::Rational words;
    if (size >= sizeof words) {
        std::memcpy(&words, data, sizeof words);
    }
    value.fromRational(size % 2 == 0, words);
    if (!value.text().isEmpty() && !altitudeValid(value.text())) {
        std::abort();
    }
    return 0;
}
