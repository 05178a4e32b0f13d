// SPDX-License-Identifier: MIT
// The four number groups of a coordinate and the rules that latitude and longitude share.
// Format: DD.MM.SS.FFF behind a letter, with two or three digits for the degrees and nothing
// left out; FFF are thousandths of a second.
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

/// The numbers of text, whose first character is not looked at. Nothing unless the text is
/// exactly of that form; how large the numbers are is not asked here.
[[nodiscard]] std::optional<Angle> angleOf(const QString &text, qsizetype degreeDigits);

/// Minutes and seconds below 60, fraction below 1000 and at most limit degrees, with nothing
/// behind them when they are just the limit.
[[nodiscard]] bool isWithin(const Angle &angle, quint32 limit);

/// letter and the groups. Larger numbers take more digits than the form has.
[[nodiscard]] QString angleText(const QString &letter, const Angle &angle, int degreeDigits);

} // namespace lumi
