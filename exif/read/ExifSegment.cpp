// SPDX-License-Identifier: MIT
#include "exif/read/ExifSegment.h"

#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"
#include "exif/tag/valueOrder.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

constexpr int kLastGpsTag = 0x0029; // the largest number that a row of the panel asks for

} // namespace

namespace lumi {

ExifSegment::ExifSegment(QIODevice &file)
    : m_file(file)
    , m_room(kLargestValueSum)
{ }

bool ExifSegment::load()
{
    if (!loadHeader()) {
        return false;
    }
    const int size = std::max(m_app1Length + kSegmentLengthPlace - kTiffBase, 0);
    m_bytes.resize(size, '\0');
    return size <= kTiffHeaderSize
        || readHere({m_bytes.data() + kTiffHeaderSize,
                     static_cast<std::size_t>(size - kTiffHeaderSize)});
}

bool ExifSegment::loadHeader()
{
    const QByteArray header = m_file.read(kTiffBase + kTiffHeaderSize);
    if (header.size() < kTiffBase + kTiffHeaderSize || !header.startsWith(kStartOfImage)
        || !header.sliced(2).startsWith(kApp1Marker)) {
        return false;
    }
    m_app1Length = qFromBigEndian<quint16>(header.constData() + kSegmentLengthPlace);
    if (!header.sliced(kSegmentLengthPlace + 2)
             .startsWith(QByteArrayView(kExifMark, sizeof kExifMark))) {
        return false;
    }
    m_tiffBase = kTiffBase;
    m_bytes = header.mid(kTiffBase);
    const QByteArray mark = m_bytes.left(4);
    m_littleEndian = mark == QByteArray("II\x2A\0", 4);
    if (!m_littleEndian && mark != QByteArray("MM\0\x2A", 4)) {
        return false;
    }
    m_ifd0Offset = u32(4);
    return true;
}

bool ExifSegment::readIfd(quint32 offset, ExifTagList &list, quint32 &link)
{
    m_readPlaces.push_back(offset);
    const int count = u16(offset);
    qint64 place = qint64(offset) + kEntryCountSize;
    for (int i = 0; i < count; ++i) {
        if (!readEntry(place, list)) {
            return false;
        }
        place += kEntrySize;
    }
    link = u32(place);
    return true;
}

bool ExifSegment::holdsIfd(quint32 offset, ExifListKind kind) const
{
    const qint64 entries = qint64(offset) + kEntryCountSize;
    const bool isWhole = entries + u16(offset) * qint64(kEntrySize) <= m_bytes.size();
    const bool wasRead = std::ranges::find(m_readPlaces, offset) != m_readPlaces.end();
    return isWhole && !wasRead && (kind != ExifListKind::Gps || isGpsTag(entries));
}

/// The interoperability directory may begin with the number of the latitude's reference. Its
/// value is a name such as "R98", the reference is one letter.
bool ExifSegment::isGpsTag(qint64 entry) const
{
    constexpr quint32 kNameLength = 4;
    const int tag = u16(entry);
    const bool isName = tag == kTagLatitudeReference && u32(entry + kCountPlace) == kNameLength
        && byteAt(entry + kValuePlace + 1) != '\0';
    return tag <= kLastGpsTag && !isName;
}

bool ExifSegment::readEntry(qint64 entry, ExifTagList &list)
{
    const quint16 tag = u16(entry);
    const quint16 type = u16(entry + kTypePlace);
    const quint32 count = u32(entry + kCountPlace);
    const qint64 size = qint64(count) * typeSize(type);
    if (typeSize(type) == 0 || size > std::min<qint64>(kLargestValue, m_room)) {
        return true;
    }
    m_room -= size;
    m_value.assign(static_cast<std::size_t>(size), '\0');
    if (!readValue(entry + kValuePlace)) {
        return false;
    }
    convertOrder(m_value, type, m_littleEndian);
    list.put(std::make_unique<FPVExifTagBytes>(tag, type, count, m_value));
    return true;
}

bool ExifSegment::readValue(qint64 word)
{
    const qint64 size = static_cast<qint64>(m_value.size());
    if (size > kInlineValueSize) {
        const qint64 offset = u32(word);
        if (offset + size > m_bytes.size()) {
            return readFar(m_tiffBase + offset);
        }
        std::memcpy(m_value.data(), m_bytes.constData() + offset, m_value.size());
        return true;
    }
    for (qint64 i = 0; i < size; ++i) {
        m_value[static_cast<std::size_t>(i)] = byteAt(word + i);
    }
    return true;
}

bool ExifSegment::readFar(qint64 place)
{
    return place >= m_file.size() || (m_file.seek(place) && readHere(m_value));
}

bool ExifSegment::readHere(std::span<char> target)
{
    const auto wanted = static_cast<qint64>(target.size());
    const qint64 present = std::clamp<qint64>(m_file.size() - m_file.pos(), 0, wanted);
    return m_file.read(target.data(), wanted) >= present;
}

char ExifSegment::byteAt(qint64 offset) const
{
    return offset < m_bytes.size() ? m_bytes.at(static_cast<qsizetype>(offset)) : '\0';
}

quint16 ExifSegment::u16(qint64 offset) const
{
    const char bytes[] = {byteAt(offset), byteAt(offset + 1)};
    return m_littleEndian ? qFromLittleEndian<quint16>(bytes) : qFromBigEndian<quint16>(bytes);
}

quint32 ExifSegment::u32(qint64 offset) const
{
    const char bytes[]
        = {byteAt(offset), byteAt(offset + 1), byteAt(offset + 2), byteAt(offset + 3)};
    return m_littleEndian ? qFromLittleEndian<quint32>(bytes) : qFromBigEndian<quint32>(bytes);
}

} // namespace lumi
