// SPDX-License-Identifier: MIT
// A latitude of at most 90 degrees. Format: "N" or "S" and four groups of digits, N35.40.20.000.
#pragma once

#include "exif/gps/LatLong.h"

class Latitude : public LatLong
{
public:
    Latitude();
};

/// Whether Latitude::setText() accepts the text.
[[nodiscard]] bool latitudeValid(const QString &text);
