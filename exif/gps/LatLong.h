// SPDX-License-Identifier: MIT
// One coordinate of a position, as the text that the user sees, as numbers, and as the fractions of
// the Exif tags. The base class accepts any text. Latitude and Longitude accept a hemisphere letter
// and four groups of digits.
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

    /// Stores the text and its numbers. If the text is not valid, returns false and text() is
    /// empty.
    [[nodiscard]] virtual bool setText(const QString &text);

    /// Stores the numbers and formats them as text. If they are out of range, returns false and
    /// changes nothing.
    [[nodiscard]] virtual bool setValues(Hemisphere hemisphere, quint32 degrees, quint32 minutes,
                                         quint32 seconds, quint32 fraction);

    /// Whether text() has the format of this class. If so, stores its numbers.
    [[nodiscard]] virtual bool isFormat();

    /// letter and these numbers as text. Does not check their range.
    [[nodiscard]] virtual QString format(const QString &letter, quint32 degrees, quint32 minutes,
                                         quint32 seconds, quint32 fraction) const;

    /// Degrees, minutes and seconds for the tag; null if text() is empty. The pointer is valid
    /// until the next call. fractionScale() says how the fraction is stored: 005 adds five tenths
    /// of a second, 050 fifty hundredths.
    [[nodiscard]] const lumi::Rational *rationals() const;

    /// Stores the value of a file. reference is the text of the hemisphere's tag. text() is empty
    /// afterwards if the value has no valid text. The denominators of degrees and minutes are
    /// ignored.
    void fromRationals(const QString &reference, std::span<const lumi::Rational, 3> data);

    /// Empty if there is no valid value.
    [[nodiscard]] const QString &text() const { return m_text; }

    [[nodiscard]] Hemisphere hemisphere() const { return m_hemisphere; }

    [[nodiscard]] quint32 degrees() const { return m_degrees; }

    [[nodiscard]] quint32 minutes() const { return m_minutes; }

    [[nodiscard]] quint32 seconds() const { return m_seconds; }

    /// The last group as a number, 0 to 999.
    [[nodiscard]] quint32 fraction() const { return m_fraction; }

protected:
    /// A coordinate that accepts only this form, which must outlive it.
    explicit LatLong(const lumi::CoordinateForm &form)
        : m_form(&form)
    { }

private:
    void store(Hemisphere hemisphere, const lumi::Angle &angle);

    QString m_text;
    Hemisphere m_hemisphere = Hemisphere::North;
    quint32 m_degrees = 0;
    quint32 m_minutes = 0;
    quint32 m_seconds = 0;
    quint32 m_fraction = 0;
    mutable std::array<lumi::Rational, 3> m_rationals;
    const lumi::CoordinateForm *m_form = nullptr; // null: any text and numbers
};
