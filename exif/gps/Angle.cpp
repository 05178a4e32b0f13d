// SPDX-License-Identifier: MIT
#include "exif/gps/Angle.h"

#include <QList>

namespace {

constexpr quint32 kGroupEnd = 60;      // minutes and seconds
constexpr quint32 kFractionEnd = 1000; // thousandths of a second
constexpr int kGroupDigits = 2;
constexpr int kFractionDigits = 3;

/// The value of at most three ASCII digits; nothing if there is another character.
std::optional<quint32> numberOf(QStringView digits)
{
    quint32 number = 0;
    for (const QChar digit : digits) {
        if (digit < QLatin1Char('0') || digit > QLatin1Char('9')) {
            return std::nullopt;
        }
        number = number * 10 + (digit.unicode() - quint32('0'));
    }
    return number;
}

QString padded(quint32 number, int digits)
{
    return QString::number(number).rightJustified(digits, QLatin1Char('0'));
}

} // namespace

std::optional<lumi::Angle> lumi::angleOf(const QString &text, qsizetype degreeDigits)
{
    const auto parts = QStringView(text).mid(1).split(QLatin1Char('.'));
    if (parts.size() != 4 || parts[0].size() != degreeDigits || parts[1].size() != kGroupDigits
        || parts[2].size() != kGroupDigits || parts[3].size() != kFractionDigits) {
        return std::nullopt;
    }
    const auto degrees = numberOf(parts[0]);
    const auto minutes = numberOf(parts[1]);
    const auto seconds = numberOf(parts[2]);
    const auto fraction = numberOf(parts[3]);
    if (!degrees || !minutes || !seconds || !fraction) {
        return std::nullopt;
    }
    return Angle{*degrees, *minutes, *seconds, *fraction};
}

bool lumi::isWithin(const Angle &angle, quint32 limit)
{
    if (angle.degrees == limit) {
        return angle.minutes == 0 && angle.seconds == 0 && angle.fraction == 0;
    }
    return angle.degrees < limit && angle.minutes < kGroupEnd && angle.seconds < kGroupEnd
        && angle.fraction < kFractionEnd;
}

QString lumi::angleText(const QString &letter, const Angle &angle, int degreeDigits)
{
    const QLatin1Char dot('.');
    return letter % padded(angle.degrees, degreeDigits) % dot % padded(angle.minutes, kGroupDigits)
        % dot % padded(angle.seconds, kGroupDigits) % dot % padded(angle.fraction, kFractionDigits);
}
