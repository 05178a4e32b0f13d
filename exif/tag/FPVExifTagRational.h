// SPDX-License-Identifier: MIT
// A tag with one fraction, shown as first/second. The reader that makes these tags puts the
// file's denominator first, so what is shown is the reciprocal of what the file says.
#pragma once

#include "exif/tag/FPVExifTag.h"

class FPVExifTagRational : public FPVExifTag
{
public:
    FPVExifTagRational(quint16 tag, quint16 type, quint32 count, qint32 first, qint32 second);

    /// The first word alone.
    [[nodiscard]] int intValue() const override;
    /// The quotient with six digits; "inf" or "nan" over a zero.
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
