// SPDX-License-Identifier: MIT
// An altitude in metres, as text and as the fraction of the Exif tag. A leading "-" means below
// sea level. The fraction has no sign; the altitude reference tag holds it.
// Format: at most nine characters and two decimals. -12, 12.3, 12.34, 0.5 and .5 are valid; 0 and
// 00.5 are not.
#pragma once

#include "exif/tag/Rational.h"

#include <QString>

class Altitude
{
public:
    Altitude() = default;
    Altitude(const Altitude &) = default;
    Altitude &operator=(const Altitude &) = default;
    virtual ~Altitude();

    /// Whether text() is a valid altitude. If so, stores its numbers.
    [[nodiscard]] virtual bool isFormat();

    /// Stores the text and its numbers. If the text is not valid, returns false and text() is
    /// empty.
    [[nodiscard]] bool setText(const QString &text);

    /// The value of the tag, without a sign; null if text() is empty. The pointer is valid until
    /// the next call. 1.05 becomes 15/10.
    [[nodiscard]] const lumi::Rational *rational() const;

    /// Stores the value of a file. text() is empty afterwards if the value has no valid text.
    void fromRational(bool aboveSeaLevel, const lumi::Rational &data);

    /// Empty if there is no valid value.
    [[nodiscard]] const QString &text() const { return m_text; }

    [[nodiscard]] bool aboveSeaLevel() const { return m_aboveSeaLevel; }

    [[nodiscard]] quint32 whole() const { return m_whole; }

    /// The digits after the dot as one number, 0 to 99.
    [[nodiscard]] quint32 fraction() const { return m_fraction; }

private:
    QString m_text;
    bool m_aboveSeaLevel = true;
    quint32 m_whole = 0;
    quint32 m_fraction = 0;
    mutable lumi::Rational m_rational;
};

/// Whether Altitude::setText() accepts the text.
[[nodiscard]] bool altitudeValid(const QString &text);
