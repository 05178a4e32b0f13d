// SPDX-License-Identifier: MIT
#include "exif/tag/FPVExifTagString.h"

#include "exif/tag/exifDictionary.h"
#include "exif/tag/fillFormat.h"

#include <algorithm>

FPVExifTagString::FPVExifTagString(quint16 tag, quint16 type, quint32 count, const QString &string)
    : FPVExifTag(tag, type, count)
    , m_string(string)
{ }

int FPVExifTagString::intValue() const
{
    return m_string.toInt();
}

QString FPVExifTagString::text() const
{
    return m_string;
}

const char *FPVExifTagString::data() const
{
    m_bytes = m_string.toLatin1();
    m_bytes.truncate(static_cast<qsizetype>(std::min<qint64>(m_bytes.size(), count())));
    return m_bytes.constData();
}

QString FPVExifTagString::description() const
{
    return lumi::fillFormat(tagFormat(tag(), QStringLiteral("%s")), {m_string});
}
