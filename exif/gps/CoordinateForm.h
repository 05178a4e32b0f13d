// SPDX-License-Identifier: MIT
// The differences between latitude and longitude: letters, number of digits, range.
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

    quint32 mostDegrees;
    int degreeDigits;
    std::array<Side, 2> sides;
};

struct Coordinate
{
    Hemisphere hemisphere;
    Angle angle;
};

/// The coordinate in text, or nothing if its format or its range is wrong.
[[nodiscard]] std::optional<Coordinate> coordinateOf(const QString &text,
                                                     const CoordinateForm &form);

/// The letter of a hemisphere; a null text if the form has no such hemisphere.
[[nodiscard]] QString letterOf(Hemisphere hemisphere, const CoordinateForm &form);

} // namespace lumi
