// SPDX-License-Identifier: MIT
// A tag with a Latin-1 text.
#pragma once

#include "exif/tag/FPVExifTag.h"

#include <QByteArray>

class FPVExifTagString : public FPVExifTag
{
public:
    FPVExifTagString(quint16 tag, quint16 type, quint32 count, const QString &string);

    /// The text as a decimal number; 0 if it is none.
    [[nodiscard]] int intValue() const override;
    [[nodiscard]] QString text() const override;
    /// At most count() bytes of the text in Latin-1, and a closing NUL.
    [[nodiscard]] const char *data() const override;
    [[nodiscard]] QString description() const override;

private:
    QString m_string;
    mutable QByteArray m_bytes;
};
