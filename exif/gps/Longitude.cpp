// SPDX-License-Identifier: MIT
#include "exif/gps/Longitude.h"

#include "exif/gps/CoordinateForm.h"

namespace {

constexpr lumi::CoordinateForm kForm
    = {180, 3, {{{QLatin1Char('E'), Hemisphere::East}, {QLatin1Char('W'), Hemisphere::West}}}};

} // namespace

bool Longitude::setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes, quint32 seconds,
                          quint32 fraction)
{
    return setValuesOf(kForm, hemisphere, {degrees, minutes, seconds, fraction});
}

bool Longitude::isFormat()
{
    return isFormatOf(kForm);
}

QString Longitude::format(const QString &letter, quint32 degrees, quint32 minutes, quint32 seconds,
                          quint32 fraction) const
{
    return lumi::angleText(letter, {degrees, minutes, seconds, fraction}, kForm.degreeDigits);
}

bool longitudeValid(const QString &text)
{
    return lumi::coordinateOf(text, kForm).has_value();
}
