// SPDX-License-Identifier: MIT
// A whole position, as it is pasted from elsewhere: N35.40.20.000E139.45.30.000.
#pragma once

#include "exif/gps/Latitude.h"
#include "exif/gps/Longitude.h"

class LatLongPair
{
public:
    /// Takes a position. Groups that are missing at the end count as 0 and digits may be left
    /// out, but both letters must be there. False when it is no position; the values are of no
    /// use then.
    [[nodiscard]] bool fromText(const QString &text);

    [[nodiscard]] const Latitude &latitude() const { return m_latitude; }

    [[nodiscard]] const Longitude &longitude() const { return m_longitude; }

private:
    Latitude m_latitude;
    Longitude m_longitude;
};
