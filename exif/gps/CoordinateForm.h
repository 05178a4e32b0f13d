// SPDX-License-Identifier: MIT
// What tells a latitude from a longitude: its letters, its digits and how far it goes.
#pragma once

#include "exif/gps/LatLong.h"

#include <array>
#include <optional>

namespace lumi {

struct CoordinateForm
{
    struct Side
    {
        QLatin1Char letter;
        Hemisphere hemisphere;
    };

    quint32 mostDegrees; ///< with nothing behind them
    int degreeDigits;
    std::array<Side, 2> sides;
};

struct Coordinate
{
    Hemisphere hemisphere;
    Angle angle;
};

/// The coordinate in text; nothing unless the text is exactly of that form and within its range.
[[nodiscard]] std::optional<Coordinate> coordinateOf(const QString &text,
                                                     const CoordinateForm &form);

/// The letter of a hemisphere, a null text when the form does not have it.
[[nodiscard]] QString letterOf(Hemisphere hemisphere, const CoordinateForm &form);

} // namespace lumi
