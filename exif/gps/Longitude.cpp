// SPDX-License-Identifier: MIT
#include "exif/gps/Longitude.h"

#include "exif/gps/CoordinateForm.h"

namespace {

constexpr lumi::CoordinateForm kForm
    = {180, 3, {{{QLatin1Char('E'), Hemisphere::East}, {QLatin1Char('W'), Hemisphere::West}}}};

} // namespace

Longitude::Longitude()
    : LatLong(kForm)
{ }

bool longitudeValid(const QString &text)
{
    return lumi::coordinateOf(text, kForm).has_value();
}
