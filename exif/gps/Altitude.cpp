// SPDX-License-Identifier: MIT
#include "exif/gps/Altitude.h"

#include "exif/gps/fractionScale.h"

#include <QRegularExpression>

namespace {

constexpr qsizetype kMostCharacters = 9;
constexpr QLatin1Char kSign('-');
constexpr QLatin1Char kDot('.');

} // namespace

Altitude::~Altitude() = default;

bool Altitude::isFormat()
{
    if (!altitudeValid(m_text)) {
        return false;
    }
    m_aboveSeaLevel = !m_text.startsWith(kSign);
    const QString number = m_text.mid(m_aboveSeaLevel ? 0 : 1);
    m_whole = number.section(kDot, 0, 0).toUInt();
    m_fraction = number.section(kDot, 1).toUInt();
    return true;
}

bool Altitude::setText(const QString &text)
{
    m_text = text;
    if (!isFormat()) {
        m_text = QString();
        return false;
    }
    return true;
}

const lumi::Rational *Altitude::rational() const
{
    if (m_text.isEmpty()) {
        return nullptr;
    }
    const quint32 scale = lumi::fractionScale(m_fraction);
    m_rational = {m_whole * scale + m_fraction, scale};
    return &m_rational;
}

void Altitude::fromRational(bool aboveSeaLevel, const lumi::Rational &data)
{
    if (data.denominator == 0) {
        m_text = QString();
        return;
    }
    // The caller sees a failure as an empty text().
    static_cast<void>(setText((aboveSeaLevel ? QString() : QString(kSign))
                              % QString::number(data.numerator / data.denominator) % kDot
                              % QString::number(data.numerator % data.denominator)));
}

bool altitudeValid(const QString &text)
{
    static const QRegularExpression kHeight(QRegularExpression::anchoredPattern(
        QStringLiteral("-?[1-9]+[0-9]*\\.?[0-9]?[0-9]?|-?0?\\.[0-9][0-9]?")));
    return text.size() <= kMostCharacters && kHeight.match(text).hasMatch();
}
