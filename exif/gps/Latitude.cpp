// SPDX-License-Identifier: MIT
#include "exif/gps/Latitude.h"

#include "exif/gps/CoordinateForm.h"

namespace {

constexpr lumi::CoordinateForm kForm
    = {90, 2, {{{QLatin1Char('N'), Hemisphere::North}, {QLatin1Char('S'), Hemisphere::South}}}};

} // namespace

bool Latitude::setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes, quint32 seconds,
                         quint32 fraction)
{
    return setValuesOf(kForm, hemisphere, {degrees, minutes, seconds, fraction});
}

bool Latitude::isFormat()
{
    return isFormatOf(kForm);
}

QString Latitude::format(const QString &letter, quint32 degrees, quint32 minutes, quint32 seconds,
                         quint32 fraction) const
{
    return lumi::angleText(letter, {degrees, minutes, seconds, fraction}, kForm.degreeDigits);
}

bool latitudeValid(const QString &text)
{
    return lumi::coordinateOf(text, kForm).has_value();
}
