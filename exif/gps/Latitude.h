// SPDX-License-Identifier: MIT
// A latitude. Its text is "N" or "S", upper case, and four groups of digits: N35.40.20.000. The
// largest number of degrees is 90, with nothing behind it.
#pragma once

#include "exif/gps/LatLong.h"

class Latitude : public LatLong
{
public:
    Latitude() = default;
    Latitude(const Latitude &) = default;
    Latitude &operator=(const Latitude &) = default;
    ~Latitude() override;

    [[nodiscard]] bool setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) override;
    [[nodiscard]] bool isFormat() override;
    [[nodiscard]] QString format(const QString &letter, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) const override;
};

/// Whether a Latitude would take the text.
[[nodiscard]] bool latitudeValid(const QString &text);
