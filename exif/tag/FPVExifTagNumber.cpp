// SPDX-License-Identifier: MIT
#include "exif/tag/FPVExifTagNumber.h"

#include "exif/tag/exifDictionary.h"
#include "exif/tag/fillFormat.h"

FPVExifTagNumber::FPVExifTagNumber(quint16 tag, quint16 type, quint32 count, qint32 value)
    : FPVExifTag(tag, type, count)
    , m_value(value)
{ }

int FPVExifTagNumber::intValue() const
{
    return m_value;
}

QString FPVExifTagNumber::text() const
{
    return QString::number(m_value);
}

const char *FPVExifTagNumber::data() const
{
    return reinterpret_cast<const char *>(&m_value);
}

QString FPVExifTagNumber::description() const
{
    return lumi::fillFormat(tagFormat(tag(), QStringLiteral("%d")), {QString::number(m_value)});
}
