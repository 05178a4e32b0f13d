// SPDX-License-Identifier: MIT
// A longitude. Its text is "E" or "W", upper case, and four groups of digits: E139.45.30.000. The
// largest number of degrees is 180, with nothing behind it.
#pragma once

#include "exif/gps/LatLong.h"

class Longitude : public LatLong
{
public:
    Longitude() = default;
    Longitude(const Longitude &) = default;
    Longitude &operator=(const Longitude &) = default;
    ~Longitude() override;

    [[nodiscard]] bool setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) override;
    [[nodiscard]] bool isFormat() override;
    [[nodiscard]] QString format(const QString &letter, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) const override;
};

/// Whether a Longitude would take the text.
[[nodiscard]] bool longitudeValid(const QString &text);
