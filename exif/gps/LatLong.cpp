// SPDX-License-Identifier: MIT
#include "exif/gps/LatLong.h"

#include "exif/gps/CoordinateForm.h"
#include "exif/gps/fractionScale.h"

LatLong::~LatLong() = default;

bool LatLong::setText(const QString &text)
{
    m_text = text;
    if (!isFormat()) {
        m_text = QString();
        return false;
    }
    return true;
}

bool LatLong::setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes, quint32 seconds,
                        quint32 fraction)
{
    const lumi::Angle angle = {degrees, minutes, seconds, fraction};
    if (!m_form) {
        store(hemisphere, angle);
        return true;
    }
    const QString letter = lumi::letterOf(hemisphere, *m_form);
    if (letter.isNull() || !lumi::isWithin(angle, m_form->mostDegrees)) {
        return false;
    }
    store(hemisphere, angle);
    m_text = format(letter, degrees, minutes, seconds, fraction);
    return true;
}

bool LatLong::isFormat()
{
    if (!m_form) {
        qDebug("LatLong::isFormat\r");
        return true;
    }
    const auto coordinate = lumi::coordinateOf(m_text, *m_form);
    if (coordinate) {
        store(coordinate->hemisphere, coordinate->angle);
    }
    return coordinate.has_value();
}

QString LatLong::format(const QString &letter, quint32 degrees, quint32 minutes, quint32 seconds,
                        quint32 fraction) const
{
    return m_form
        ? lumi::angleText(letter, {degrees, minutes, seconds, fraction}, m_form->degreeDigits)
        : QString();
}

const lumi::Rational *LatLong::rationals() const
{
    if (m_text.isEmpty()) {
        return nullptr;
    }
    const quint32 scale = lumi::fractionScale(m_fraction);
    m_rationals = {{{m_degrees, 1}, {m_minutes, 1}, {m_seconds * scale + m_fraction, scale}}};
    return m_rationals.data();
}

void LatLong::fromRationals(const QString &reference, std::span<const lumi::Rational, 3> data)
{
    const lumi::Rational &seconds = data[2];
    if (seconds.denominator == 0) {
        m_text = QString();
        return;
    }
    m_degrees = data[0].numerator;
    m_minutes = data[1].numerator;
    m_seconds = seconds.numerator / seconds.denominator;
    m_fraction = seconds.numerator % seconds.denominator;
    // The caller sees a failure as an empty text().
    static_cast<void>(setText(format(reference, m_degrees, m_minutes, m_seconds, m_fraction)));
}

void LatLong::store(Hemisphere hemisphere, const lumi::Angle &angle)
{
    m_hemisphere = hemisphere;
    m_degrees = angle.degrees;
    m_minutes = angle.minutes;
    m_seconds = angle.seconds;
    m_fraction = angle.fraction;
}
