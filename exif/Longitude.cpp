// SPDX-License-Identifier: MIT
#include "exif/Longitude.h"

namespace {

constexpr quint32 kMostDegrees = 180;
constexpr int kDegreeDigits = 3;
constexpr QLatin1Char kEastLetter('E');
constexpr QLatin1Char kWestLetter('W');

std::optional<Hemisphere> hemisphereOf(const QString &text)
{
    if (text.startsWith(kEastLetter)) {
        return Hemisphere::East;
    }
    return text.startsWith(kWestLetter) ? std::optional(Hemisphere::West) : std::nullopt;
}

std::optional<lumi::Angle> validAngle(const QString &text)
{
    const auto angle = lumi::angleOf(text, kDegreeDigits);
    return angle && lumi::isWithin(*angle, kMostDegrees) ? angle : std::nullopt;
}

} // namespace

Longitude::~Longitude() = default;

bool Longitude::setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes, quint32 seconds,
                          quint32 fraction)
{
    const bool isEast = hemisphere == Hemisphere::East;
    if ((!isEast && hemisphere != Hemisphere::West)
        || !lumi::isWithin({degrees, minutes, seconds, fraction}, kMostDegrees)) {
        return false;
    }
    store(hemisphere, {degrees, minutes, seconds, fraction});
    storeText(
        format(QString(isEast ? kEastLetter : kWestLetter), degrees, minutes, seconds, fraction));
    return true;
}

bool Longitude::isFormat()
{
    const auto hemisphere = hemisphereOf(text());
    const auto angle = validAngle(text());
    if (!hemisphere || !angle) {
        return false;
    }
    store(*hemisphere, *angle);
    return true;
}

QString Longitude::format(const QString &letter, quint32 degrees, quint32 minutes, quint32 seconds,
                          quint32 fraction) const
{
    return lumi::angleText(letter, {degrees, minutes, seconds, fraction}, kDegreeDigits);
}

bool longitudeValid(const QString &text)
{
    return hemisphereOf(text) && validAngle(text);
}
