// SPDX-License-Identifier: MIT
// A tag with one fraction, shown as first/second. The walking reader passes the file's denominator
// as first, so the reciprocal of the stored value is shown.
#pragma once

#include "exif/tag/FPVExifTag.h"

class FPVExifTagRational : public FPVExifTag
{
public:
    FPVExifTagRational(quint16 tag, quint16 type, quint32 count, qint32 first, qint32 second);

    /// first().
    [[nodiscard]] int intValue() const override;
    /// The quotient with six digits; "inf" or "nan" if second() is 0.
    [[nodiscard]] QString text() const override;
    /// Both words in host order, eight bytes.
    [[nodiscard]] const char *data() const override;
    [[nodiscard]] QString description() const override;

    [[nodiscard]] qint32 first() const { return m_first; }

    [[nodiscard]] qint32 second() const { return m_second; }

private:
    qint32 m_first;
    qint32 m_second;
};
