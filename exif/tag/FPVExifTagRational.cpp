// SPDX-License-Identifier: MIT
#include "exif/tag/FPVExifTagRational.h"

#include "exif/tag/exifDictionary.h"
#include "exif/tag/fillFormat.h"

FPVExifTagRational::FPVExifTagRational(quint16 tag, quint16 type, quint32 count, qint32 first,
                                       qint32 second)
    : FPVExifTag(tag, type, count)
    , m_first(first)
    , m_second(second)
{ }

int FPVExifTagRational::intValue() const
{
    return m_first;
}

QString FPVExifTagRational::text() const
{
    return QString::number(double(m_first) / double(m_second), 'g', 6);
}

const char *FPVExifTagRational::data() const
{
    return reinterpret_cast<const char *>(&m_first);
}

QString FPVExifTagRational::description() const
{
    return lumi::fillFormat(tagFormat(tag(), QStringLiteral("%d/%d")),
                            {QString::number(m_first), QString::number(m_second)});
}
