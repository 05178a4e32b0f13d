// SPDX-License-Identifier: MIT
// One coordinate of a position in three shapes: the text that the user sees, numbers, and the
// fractions of the Exif tags. The base class takes any text; Latitude and Longitude take only
// their own form, a hemisphere letter and four groups of digits.
#pragma once

#include "exif/gps/Angle.h"
#include "exif/tag/Rational.h"

#include <QString>

#include <array>
#include <span>

enum class Hemisphere : quint32 {
    North = 0,
    East = 1,
    West = 2,
    South = 3,
};

namespace lumi {
struct CoordinateForm;
} // namespace lumi

class LatLong
{
public:
    LatLong() = default;
    LatLong(const LatLong &) = default;
    LatLong &operator=(const LatLong &) = default;
    virtual ~LatLong();

    /// Takes the text and the numbers in it. False when the text is none of this class; text()
    /// is empty then.
    [[nodiscard]] virtual bool setText(const QString &text);

    /// Takes the numbers and makes the text of them. False, with nothing changed, when they are
    /// out of range.
    [[nodiscard]] virtual bool setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes,
                                         quint32 seconds, quint32 fraction);

    /// Whether text() has the form of this class; takes the numbers out of it if so.
    [[nodiscard]] virtual bool isFormat();

    /// The text of these numbers, whatever they are, behind letter.
    [[nodiscard]] virtual QString format(const QString &letter, quint32 degrees, quint32 minutes,
                                         quint32 seconds, quint32 fraction) const;

    /// Degrees, minutes and seconds for a tag, lent until the next call; null when text() is
    /// empty. The fraction is scaled by the size of its number: 005 adds five tenths of a
    /// second, 050 fifty hundredths.
    [[nodiscard]] const lumi::Rational *rationals() const;

    /// Takes what a file holds: reference is the text of the hemisphere's tag. text() is empty
    /// afterwards when that makes no value of this class. The denominators of degrees and
    /// minutes are not read.
    void fromRationals(const QString &reference, std::span<const lumi::Rational, 3> data);

    /// Empty when there is no valid value.
    [[nodiscard]] const QString &text() const { return m_text; }

    [[nodiscard]] Hemisphere hemisphere() const { return m_hemisphere; }

    [[nodiscard]] quint32 degrees() const { return m_degrees; }

    [[nodiscard]] quint32 minutes() const { return m_minutes; }

    [[nodiscard]] quint32 seconds() const { return m_seconds; }

    /// The last group as a number, 0 to 999.
    [[nodiscard]] quint32 fraction() const { return m_fraction; }

protected:
    /// setValues() and isFormat() of a class whose values have that form.
    [[nodiscard]] bool setValuesOf(const lumi::CoordinateForm &form, Hemisphere hemisphere,
                                   const lumi::Angle &angle);
    [[nodiscard]] bool isFormatOf(const lumi::CoordinateForm &form);

private:
    void store(Hemisphere hemisphere, const lumi::Angle &angle);

    QString m_text;
    Hemisphere m_hemisphere = Hemisphere::North;
    quint32 m_degrees = 0;
    quint32 m_minutes = 0;
    quint32 m_seconds = 0;
    quint32 m_fraction = 0;
    mutable std::array<lumi::Rational, 3> m_rationals;
};
