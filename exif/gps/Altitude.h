// SPDX-License-Identifier: MIT
// A height above or below the sea, in metres with at most two digits behind the dot, as text
// and as the fraction of the Exif tag. A leading "-" means below the sea; the fraction has no
// sign, the tag beside it tells.
// Format: at most nine characters. -12, 12.3, 12.34, 0.5 and .5 are heights; 0 and 00.5 are none.
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

    /// Whether text() is a height; takes the numbers out of it if so.
    [[nodiscard]] virtual bool isFormat();

    /// Takes the text and the numbers in it. False when it is no height; text() is empty then.
    [[nodiscard]] bool setText(const QString &text);

    /// The height for a tag, without its sign, lent until the next call; null when text() is
    /// empty. 1.05 becomes 15/10.
    [[nodiscard]] const lumi::Rational *rational() const;

    /// Takes what a file holds. text() is empty afterwards when that is no height of this form.
    void fromRational(bool aboveSeaLevel, const lumi::Rational &data);

    /// Empty when there is no valid value.
    [[nodiscard]] const QString &text() const { return m_text; }

    [[nodiscard]] bool aboveSeaLevel() const { return m_aboveSeaLevel; }

    [[nodiscard]] quint32 whole() const { return m_whole; }

    /// The digits behind the dot as one number, 0 to 99.
    [[nodiscard]] quint32 fraction() const { return m_fraction; }

private:
    QString m_text;
    bool m_aboveSeaLevel = true;
    quint32 m_whole = 0;
    quint32 m_fraction = 0;
    mutable lumi::Rational m_rational;
};

/// Whether an Altitude would take the text.
[[nodiscard]] bool altitudeValid(const QString &text);
