// SPDX-License-Identifier: MIT
#include "exif/write/exifBlockBytes.h"

#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"
#include "exif/tag/valueOrder.h"

#include <QtEndian>

#include <algorithm>

namespace {

constexpr char kTiffHeader[] = "II\x2A\0\x08\0\0"; // the closing NUL is the offset's last byte
static_assert(sizeof kTiffHeader == lumi::kTiffHeaderSize);

std::span<const char> valueOf(const FPVExifTag &tag)
{
    const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(&tag);
    return bytes ? std::span(bytes->data(), static_cast<std::size_t>(bytes->size()))
                 : std::span<const char>();
}

/// The value in the byte order of the file.
QByteArray fileValue(const FPVExifTag &tag)
{
    const std::span<const char> value = valueOf(tag);
    QByteArray bytes(value.data(), static_cast<qsizetype>(value.size()));
    lumi::convertOrder({bytes.data(), value.size()}, tag.type(), true);
    return bytes;
}

template <class Number> void store(QByteArray &bytes, qsizetype place, Number number)
{
    qToLittleEndian<Number>(number, bytes.data() + place);
}

/// Puts a tag of that type and count into list. Its first bytes are the value, the others 0.
void setPointer(lumi::ExifTagList &list, int number, quint16 type, quint32 count, quint32 value)
{
    std::vector<char> bytes(std::size_t(count) * static_cast<std::size_t>(typeSize(type)));
    char word[sizeof value];
    qToLittleEndian(value, word);
    std::copy_n(word, std::min(bytes.size(), sizeof word), bytes.begin());
    lumi::convertOrder(bytes, type, true);
    list.put(std::make_unique<FPVExifTagBytes>(static_cast<quint16>(number), type, count, bytes));
}

/// Puts a pointer of one LONG into list.
void putPointer(lumi::ExifTagList &list, int number, quint32 value)
{
    setPointer(list, number, lumi::TiffLong, 1, value);
}

/// Changes the value of a pointer that list has. Its type and count stay.
void movePointer(lumi::ExifTagList &list, int number, quint32 value)
{
    if (const FPVExifTag *old = list.findNumber(number)) {
        setPointer(list, number, old->type(), old->count(), value);
    }
}

} // namespace

quint32 lumi::ifdSize(const ExifTagList &list)
{
    if (list.isEmpty()) {
        return 0;
    }
    qsizetype size = kBareDirectorySize;
    for (const FPVExifTag *tag : list) {
        const auto value = static_cast<qsizetype>(valueOf(*tag).size());
        size += kEntrySize + (value > kInlineValueSize ? value + value % 2 : 0);
    }
    return static_cast<quint32>(size);
}

QByteArray lumi::ifdBytes(const ExifTagList &list, quint32 offset)
{
    if (list.isEmpty()) {
        return {};
    }
    const qsizetype headSize = kBareDirectorySize + qsizetype(kEntrySize) * list.count();
    QByteArray head(headSize, '\0');
    QByteArray values;
    store(head, 0, static_cast<quint16>(list.count()));
    qsizetype entry = kEntryCountSize;
    for (const FPVExifTag *tag : list) {
        const QByteArray value = fileValue(*tag);
        store(head, entry, tag->tag());
        store(head, entry + kTypePlace, tag->type());
        store(head, entry + kCountPlace, tag->count());
        if (value.size() > kInlineValueSize) {
            store(head, entry + kValuePlace,
                  offset + static_cast<quint32>(headSize + values.size()));
            values += value;
            values.append(values.size() % 2, '\0');
        } else {
            head.replace(entry + kValuePlace, value.size(), value);
        }
        entry += kEntrySize;
    }
    return head + values;
}

QByteArray lumi::mainBlock(const ExifLists &lists)
{
    // The pointers must exist before the sizes are computed. Their values follow from the sizes.
    if (!lists.exif.isEmpty()) {
        putPointer(lists.ifd0, kTagExifPointer, 0);
    }
    if (!lists.gps.isEmpty()) {
        putPointer(lists.ifd0, kTagGpsPointer, 0);
    }
    const quint32 exifOffset = kTiffHeaderSize + ifdSize(lists.ifd0);
    const quint32 interoperabilityOffset = exifOffset + ifdSize(lists.exif);
    const quint32 gpsOffset = interoperabilityOffset + ifdSize(lists.interoperability);
    if (!lists.exif.isEmpty()) {
        putPointer(lists.ifd0, kTagExifPointer, exifOffset);
    }
    if (!lists.gps.isEmpty()) {
        putPointer(lists.ifd0, kTagGpsPointer, gpsOffset);
    }
    movePointer(lists.exif, kTagInteroperabilityPointer, interoperabilityOffset);
    QByteArray block = ifdBytes(lists.ifd0, kTiffHeaderSize) + ifdBytes(lists.exif, exifOffset)
        + ifdBytes(lists.interoperability, interoperabilityOffset) + ifdBytes(lists.gps, gpsOffset);
    if (!lists.ifd0.isEmpty()) {
        store(block, kEntryCountSize + qsizetype(kEntrySize) * lists.ifd0.count(),
              static_cast<quint32>(kTiffHeaderSize + block.size()));
    }
    return block;
}

QByteArray lumi::photoStart(const ExifLists &lists, quint32 thumbnailLength)
{
    const QByteArray main = mainBlock(lists);
    const auto ifd1Offset = static_cast<quint32>(kTiffHeaderSize + main.size());
    if (thumbnailLength > 0) {
        movePointer(lists.ifd1, kTagThumbnailOffset, ifd1Offset + ifdSize(lists.ifd1));
    }
    const QByteArray ifd1 = ifdBytes(lists.ifd1, ifd1Offset);
    // The field includes itself, but not the start of image and the marker.
    const QByteArray head
        = QByteArray(kExifMark, sizeof kExifMark) + QByteArray(kTiffHeader, sizeof kTiffHeader);
    const qint64 length = 2 + head.size() + main.size() + ifd1.size() + qint64(thumbnailLength);
    QByteArray field(2, '\0');
    qToBigEndian<quint16>(static_cast<quint16>(length + length % 2), field.data());
    return QByteArray(kStartOfImage) + kApp1Marker + field + head + main + ifd1;
}
