// SPDX-License-Identifier: MIT
#include "exif/tag/FPVExifTag.h"

#include "exif/tag/exifDictionary.h"

FPVExifTag::FPVExifTag(quint16 tag, quint16 type, quint32 count)
    : m_tag(tag)
    , m_type(type)
    , m_count(count)
{ }

FPVExifTag::~FPVExifTag() = default;

int FPVExifTag::intValue() const
{
    return 0;
}

QString FPVExifTag::text() const
{
    return QString();
}

const char *FPVExifTag::data() const
{
    return nullptr;
}

QString FPVExifTag::name() const
{
    return tagName(m_tag);
}

QString FPVExifTag::description() const
{
    return tagFormat(m_tag, QString());
}
