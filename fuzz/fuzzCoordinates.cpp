// SPDX-License-Identifier: MIT
// Coordinates of arbitrary text: the fractions of an accepted text must give the same text again,
// and a pasted position must consist of two accepted texts.
#include "exif/gps/LatLongPair.h"

#include <cstdint>
#include <cstdlib>

namespace {

template <class Value> void check(const QString &text, bool isValid)
{
    Value value;
    if (value.setText(text) != isValid || value.text() != (isValid ? text : QString())) {
        std::abort();
    }
    if (const lumi::Rational *data = value.rationals()) {
        Value other;
        other.fromRationals(text.left(1), std::span<const lumi::Rational, 3>(data, 3));
        if (other.text() != text) {
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text
        = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    check<Latitude>(text, latitudeValid(text));
    check<Longitude>(text, longitudeValid(text));
    LatLongPair pair;
    if (pair.fromText(text)
        && !(latitudeValid(pair.latitude().text()) && longitudeValid(pair.longitude().text()))) {
        std::abort();
    }
    return 0;
}
