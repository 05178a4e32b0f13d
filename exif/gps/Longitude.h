// SPDX-License-Identifier: MIT
// A longitude of at most 180 degrees. Format: "E" or "W" and four groups of digits, E139.45.30.000.
#pragma once

#include "exif/gps/LatLong.h"

class Longitude : public LatLong
{
public:
    [[nodiscard]] bool setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) override;
    [[nodiscard]] bool isFormat() override;
    [[nodiscard]] QString format(const QString &letter, quint32 degrees, quint32 minutes,
                                 quint32 seconds, quint32 fraction) const override;
};

/// Whether Longitude::setText() accepts the text.
[[nodiscard]] bool longitudeValid(const QString &text);
