// SPDX-License-Identifier: MIT
#include "exif/tag/FPVExifTagBytes.h"

#include <algorithm>
#include <cstring>

FPVExifTagBytes::FPVExifTagBytes(quint16 tag, quint16 type, quint32 count,
                                 std::span<const char> value)
    : FPVExifTag(tag, type, count)
    , m_bytes(new char[value.size()])
    , m_size(static_cast<qsizetype>(value.size()))
{
    std::copy(value.begin(), value.end(), m_bytes.get());
}

int FPVExifTagBytes::intValue() const
{
    qint32 value = 0;
    std::memcpy(&value, m_bytes.get(), std::min<std::size_t>(static_cast<std::size_t>(m_size), 4));
    return value;
}

QString FPVExifTagBytes::text() const
{
    const char *end = std::find(m_bytes.get(), m_bytes.get() + m_size, '\0');
    return QString::fromUtf8(m_bytes.get(), end - m_bytes.get());
}

const char *FPVExifTagBytes::data() const
{
    return m_bytes.get();
}
