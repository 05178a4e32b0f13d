// SPDX-License-Identifier: MIT
// A whole position, as users paste it: N35.40.20.000E139.45.30.000.
#pragma once

#include "exif/gps/Latitude.h"
#include "exif/gps/Longitude.h"

class LatLongPair
{
public:
    /// Stores a position. Missing groups at the end count as 0 and groups may have fewer digits,
    /// but both letters are required. If text is no position, returns false and the values are
    /// undefined.
    [[nodiscard]] bool fromText(const QString &text);

    [[nodiscard]] const Latitude &latitude() const { return m_latitude; }

    [[nodiscard]] const Longitude &longitude() const { return m_longitude; }

private:
    Latitude m_latitude;
    Longitude m_longitude;
};
