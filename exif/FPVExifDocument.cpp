// SPDX-License-Identifier: MIT
#include "exif/FPVExifDocument.h"

#include "exif/ExifSegment.h"
#include "exif/embeddedPicture.h"
#include "exif/exifBlockBytes.h"
#include "exif/pointerTags.h"

#include <QFileInfo>
#include <QImage>

#include <algorithm>
#include <utility>

namespace {

// Directories, values and thumbnail for which a segment has room, as an even number.
constexpr qint64 kMostInASegment = 65518;

quint32 valueOf(const FPVExifTag *tag)
{
    return tag ? static_cast<quint32>(tag->intValue()) : 0;
}

} // namespace

FPVExifDocument::FPVExifDocument(const QString &path)
    : QFile(path)
{
    // Opening a pipe or a device could block for ever.
    if (path.isEmpty() || !QFileInfo(path).isFile()
        || !open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return;
    }
    m_valid = readAll();
    if (!m_valid) {
        close();
    }
}

FPVExifDocument::~FPVExifDocument() = default;

bool FPVExifDocument::hasThumbnail() const
{
    return m_thumbnailOffset >= 1 && m_thumbnailLength > 0;
}

QImage *FPVExifDocument::thumbnail()
{
    if (!m_valid || !hasThumbnail()) {
        return nullptr;
    }
    QImage image
        = lumi::embeddedPicture(*this, qint64{m_tiffBase} + m_thumbnailOffset, m_thumbnailLength);
    return image.isNull() ? nullptr : new QImage(std::move(image));
}

QImage *FPVExifDocument::thumbnail(const QString &path)
{
    FPVExifDocument document(path);
    return document.thumbnail();
}

FPVExifTag *FPVExifDocument::find(int number, const lumi::ExifTagList &list) const
{
    return list.findNumber(number);
}

FPVExifTag *FPVExifDocument::find(int number, ExifListKind kind) const
{
    return find(number, list(kind));
}

const lumi::ExifTagList &FPVExifDocument::list(ExifListKind kind) const
{
    return this->*listAt(kind);
}

lumi::ExifTagList &FPVExifDocument::editableList(ExifListKind kind)
{
    return this->*listAt(kind);
}

FPVExifDocument::ListMember FPVExifDocument::listAt(ExifListKind kind)
{
    switch (kind) {
    case ExifListKind::Exif:
        return &FPVExifDocument::m_exif;
    case ExifListKind::Interoperability:
        return &FPVExifDocument::m_interoperability;
    case ExifListKind::Gps:
        return &FPVExifDocument::m_gps;
    case ExifListKind::Ifd1:
        return &FPVExifDocument::m_ifd1;
    case ExifListKind::Ifd0:
        break;
    }
    return &FPVExifDocument::m_ifd0;
}

bool FPVExifDocument::readAll()
{
    lumi::ExifSegment segment(*this);
    const bool loaded = segment.load();
    m_littleEndian = segment.isLittleEndian() ? 1 : 0;
    m_tiffBase = segment.tiffBase();
    m_app1Length = segment.app1Length();
    m_ifd0Offset = segment.ifd0Offset();
    return loaded && segment.readIfd(m_ifd0Offset, m_ifd0, m_ifd1Offset) && readIfd1(segment)
        && readSubIfds(segment);
}

bool FPVExifDocument::readSubIfds(lumi::ExifSegment &segment)
{
    qint64 room = roomBesideLinked(segment);
    if (!readPointed(segment, m_ifd0.findNumber(lumi::kExifPointer), m_exif, &room)) {
        return false;
    }
    const FPVExifTag *gps = m_ifd0.findNumber(lumi::kGpsPointer);
    const FPVExifTag *interoperability = m_exif.findNumber(lumi::kInteroperabilityPointer);
    // Without a directory of its own this one leads to what is written next.
    const bool isOfGps = gps && valueOf(gps) == valueOf(interoperability);
    return (isOfGps || readPointed(segment, interoperability, m_interoperability, &room))
        && readPointed(segment, gps, m_gps, &room);
}

/// What a pointer leads to counts as empty when it goes beyond the segment, when it is one of
/// the linked directories, and when the block as it would be written no longer fitted a segment
/// with it: the pointer is then left over from an older block, and what it leads to must not
/// come into the next one.
bool FPVExifDocument::readPointed(lumi::ExifSegment &segment, const FPVExifTag *pointer,
                                  lumi::ExifTagList &list, qint64 *room) const
{
    const quint32 offset = valueOf(pointer);
    if (!pointer || offset == m_ifd0Offset || offset == m_ifd1Offset) {
        return true;
    }
    const std::optional<qint64> size = segment.sizeOfIfd(offset);
    if (!size || *size > *room) {
        return true;
    }
    *room -= *size;
    quint32 unusedLink = 0;
    return segment.readIfd(offset, list, unusedLink);
}

/// The bytes that a segment has for the directories that tags point to. Values and thumbnails
/// from outside the segment leave no less room than a full one would.
qint64 FPVExifDocument::roomBesideLinked(const lumi::ExifSegment &segment) const
{
    const bool isInside = qint64(m_thumbnailOffset) + m_thumbnailLength <= segment.size();
    const qint64 thumbnail = hasThumbnail() && isInside ? m_thumbnailLength : 0;
    const qint64 linked = qint64(lumi::ifdSize(m_ifd0)) + lumi::ifdSize(m_ifd1) + thumbnail;
    return kMostInASegment - std::min(linked, segment.size());
}

bool FPVExifDocument::readIfd1(lumi::ExifSegment &segment)
{
    m_ifd0Span = m_ifd1Offset - m_ifd0Offset;
    if (m_ifd1Offset == 0) {
        return true;
    }
    if (!segment.readIfd(m_ifd1Offset, m_ifd1, m_nextIfdOffset)) {
        return false;
    }
    m_thumbnailLength = valueOf(m_ifd1.findNumber(lumi::kThumbnailLength));
    m_thumbnailOffset = valueOf(m_ifd1.findNumber(lumi::kThumbnailOffset));
    return true;
}
