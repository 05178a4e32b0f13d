// SPDX-License-Identifier: MIT
// A longitude of at most 180 degrees. Format: "E" or "W" and four groups of digits, E139.45.30.000.
#pragma once

#include "exif/gps/LatLong.h"

class Longitude : public LatLong
{
public:
    Longitude();
};

/// Whether Longitude::setText() accepts the text.
[[nodiscard]] bool longitudeValid(const QString &text);
