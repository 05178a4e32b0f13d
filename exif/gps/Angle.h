// SPDX-License-Identifier: MIT
// The four numbers of a coordinate and the rules that latitude and longitude share.
// Format: a letter, then DD.MM.SS.FFF. Degrees have two or three digits; FFF are thousandths of a
// second. No digit may be left out.
#pragma once

#include <QString>

#include <optional>

namespace lumi {

struct Angle
{
    quint32 degrees = 0;
    quint32 minutes = 0;
    quint32 seconds = 0;
    quint32 fraction = 0;
};

/// The numbers of text, or nothing if the format is wrong. Ignores the first character and does
/// not check the range of the numbers.
[[nodiscard]] std::optional<Angle> angleOf(const QString &text, qsizetype degreeDigits);

/// Whether minutes and seconds are below 60, the fraction below 1000 and the whole angle at most
/// limit degrees.
[[nodiscard]] bool isWithin(const Angle &angle, quint32 limit);

/// letter and the groups. Numbers out of range take more digits than the format has.
[[nodiscard]] QString angleText(const QString &letter, const Angle &angle, int degreeDigits);

} // namespace lumi
