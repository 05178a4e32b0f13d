// SPDX-License-Identifier: MIT
#include "exif/Latitude.h"

#include "exif/CoordinateForm.h"

namespace {

constexpr lumi::CoordinateForm kForm
    = {90, 2, {{{QLatin1Char('N'), Hemisphere::North}, {QLatin1Char('S'), Hemisphere::South}}}};

} // namespace

Latitude::~Latitude() = default;

bool Latitude::setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes, quint32 seconds,
                         quint32 fraction)
{
    const lumi::Angle angle{degrees, minutes, seconds, fraction};
    const QString letter = lumi::letterOf(hemisphere, kForm);
    if (letter.isNull() || !lumi::isWithin(angle, kForm.mostDegrees)) {
        return false;
    }
    store(hemisphere, angle);
    storeText(format(letter, degrees, minutes, seconds, fraction));
    return true;
}

bool Latitude::isFormat()
{
    const auto coordinate = lumi::coordinateOf(text(), kForm);
    if (coordinate) {
        store(coordinate->hemisphere, coordinate->angle);
    }
    return coordinate.has_value();
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
