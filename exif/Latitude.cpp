// SPDX-License-Identifier: MIT
#include "exif/Latitude.h"

namespace {

constexpr quint32 kMostDegrees = 90;
constexpr int kDegreeDigits = 2;
constexpr QLatin1Char kNorthLetter('N');
constexpr QLatin1Char kSouthLetter('S');

std::optional<Hemisphere> hemisphereOf(const QString &text)
{
    if (text.startsWith(kNorthLetter)) {
        return Hemisphere::North;
    }
    return text.startsWith(kSouthLetter) ? std::optional(Hemisphere::South) : std::nullopt;
}

std::optional<lumi::Angle> validAngle(const QString &text)
{
    const auto angle = lumi::angleOf(text, kDegreeDigits);
    return angle && lumi::isWithin(*angle, kMostDegrees) ? angle : std::nullopt;
}

} // namespace

Latitude::~Latitude() = default;

bool Latitude::setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes, quint32 seconds,
                         quint32 fraction)
{
    const bool isNorth = hemisphere == Hemisphere::North;
    if ((!isNorth && hemisphere != Hemisphere::South)
        || !lumi::isWithin({degrees, minutes, seconds, fraction}, kMostDegrees)) {
        return false;
    }
    store(hemisphere, {degrees, minutes, seconds, fraction});
    storeText(format(QString(isNorth ? kNorthLetter : kSouthLetter), degrees, minutes, seconds,
                     fraction));
    return true;
}

bool Latitude::isFormat()
{
    const auto hemisphere = hemisphereOf(text());
    const auto angle = validAngle(text());
    if (!hemisphere || !angle) {
        return false;
    }
    store(*hemisphere, *angle);
    return true;
}

QString Latitude::format(const QString &letter, quint32 degrees, quint32 minutes, quint32 seconds,
                         quint32 fraction) const
{
    return lumi::angleText(letter, {degrees, minutes, seconds, fraction}, kDegreeDigits);
}

bool latitudeValid(const QString &text)
{
    return hemisphereOf(text) && validAngle(text);
}
