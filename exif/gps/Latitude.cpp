// SPDX-License-Identifier: MIT
#include "exif/gps/Latitude.h"

#include "exif/gps/CoordinateForm.h"

namespace {

constexpr lumi::CoordinateForm kForm
    = {90, 2, {{{QLatin1Char('N'), Hemisphere::North}, {QLatin1Char('S'), Hemisphere::South}}}};

} // namespace

Latitude::Latitude()
    : LatLong(kForm)
{ }

bool latitudeValid(const QString &text)
{
    return lumi::coordinateOf(text, kForm).has_value();
}
