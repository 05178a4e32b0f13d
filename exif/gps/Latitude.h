// SPDX-License-Identifier: MIT
// A latitude of at most 90 degrees. Format: "N" or "S" and four groups of digits, N35.40.20.000.
#pragma once

#include "exif/gps/LatLong.h"

class Latitude : public LatLong
{
public:
    [[nodiscard]] bool setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) override;
    [[nodiscard]] bool isFormat() override;
    [[nodiscard]] QString format(const QString &letter, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) const override;
};

/// Whether Latitude::setText() accepts the text.
[[nodiscard]] bool latitudeValid(const QString &text);
