// SPDX-License-Identifier: MIT
// A tag with one whole number: the first of its values.
#pragma once

#include "exif/tag/FPVExifTag.h"

class FPVExifTagNumber : public FPVExifTag
{
public:
    FPVExifTagNumber(quint16 tag, quint16 type, quint32 count, qint32 value);

    [[nodiscard]] int intValue() const override;
    [[nodiscard]] QString text() const override;
    /// The four bytes of the number in host order.
    [[nodiscard]] const char *data() const override;
    [[nodiscard]] QString description() const override;

private:
    qint32 m_value;
};
