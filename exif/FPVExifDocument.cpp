// SPDX-License-Identifier: MIT
#include "exif/FPVExifDocument.h"

#include "exif/ExifSegment.h"
#include "exif/embeddedPicture.h"
#include "exif/exifBlockBytes.h"
#include "exif/pointerTags.h"
#include "exif/tagNumbers.h"
#include "exif/tagRoom.h"

#include <QFileInfo>
#include <QImage>

#include <algorithm>
#include <utility>

namespace {

// Directories, values and thumbnail for which a segment has room, as an even number.
constexpr qint64 kMostInASegment = 65518;
constexpr int kLastGpsTag = 0x001F;

quint32 valueOf(const FPVExifTag *tag)
{
    return tag ? static_cast<quint32>(tag->intValue()) : 0;
}

bool describesThumbnail(const lumi::ExifTagList &list)
{
    return std::any_of(list.begin(), list.end(), [](const FPVExifTag *tag) {
        return tag->tag() == lumi::kTagCompression || tag->tag() == lumi::kTagStripOffsets
            || tag->tag() == lumi::kThumbnailOffset;
    });
}

/// No other directory but the interoperability one has numbers as low as these.
bool describesPosition(const lumi::ExifTagList &list)
{
    return std::all_of(list.begin(), list.end(), [](const FPVExifTag *tag) {
        return tag->tag() <= kLastGpsTag;
    });
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
    if (!loaded || !segment.readIfd(m_ifd0Offset, m_ifd0, m_ifd1Offset)) {
        return false;
    }
    // Values of the first directory that lie outside leave no less room than a full segment.
    const qint64 ifd0 = std::min<qint64>(lumi::ifdSize(m_ifd0), segment.size());
    const qint64 room = kMostInASegment - ifd0;
    if (!readSubIfds(segment, room) || !readIfd1(segment)) {
        return false;
    }
    fitBlock(room);
    return true;
}

bool FPVExifDocument::readSubIfds(lumi::ExifSegment &segment, qint64 room)
{
    if (!readPointed(segment, m_ifd0.findNumber(lumi::kExifPointer), &FPVExifDocument::m_exif,
                     room)) {
        return false;
    }
    const FPVExifTag *gps = m_ifd0.findNumber(lumi::kGpsPointer);
    const FPVExifTag *interoperability = m_exif.findNumber(lumi::kInteroperabilityPointer);
    // Without a directory of its own this one leads to what is written next.
    const bool isOfGps = gps && valueOf(gps) == valueOf(interoperability);
    return (isOfGps
            || readPointed(segment, interoperability, &FPVExifDocument::m_interoperability, room))
        && readPointed(segment, gps, &FPVExifDocument::m_gps, room);
}

/// A pointer can be left over from an older block. What it leads to counts as empty then: it
/// must not come into the next block. Some programs link the Exif directory behind the first
/// one as well; only what describes a thumbnail, or the position that the GPS pointer leads to,
/// is none. What is read is cut to size at once, or the values of one directory would leave none
/// to be held for the next.
bool FPVExifDocument::readPointed(lumi::ExifSegment &segment, const FPVExifTag *pointer,
                                  ListMember target, qint64 room)
{
    const quint32 offset = valueOf(pointer);
    const bool isExif = target == &FPVExifDocument::m_exif;
    if (!pointer || offset == m_ifd0Offset || (offset == m_ifd1Offset && !isExif)
        || !segment.holdsIfd(offset)) {
        return true;
    }
    lumi::ExifTagList &list = this->*target;
    quint32 unusedLink = 0;
    if (!segment.readIfd(offset, list, unusedLink)) {
        return false;
    }
    const FPVExifTag *gps = m_ifd0.findNumber(lumi::kGpsPointer);
    const bool isOther = (offset == m_ifd1Offset && describesThumbnail(list))
        || (isExif && gps && offset == valueOf(gps) && describesPosition(list));
    segment.giveBack(lumi::fitTags(pointedLists(), isOther ? 0 : room));
    return true;
}

std::array<lumi::ExifTagList *, 3> FPVExifDocument::pointedLists()
{
    return {&m_exif, &m_interoperability, &m_gps};
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

/// The thumbnail goes like a value of its size. Not so one that no segment could hold, beside
/// which nothing else would be worth its loss.
void FPVExifDocument::fitBlock(qint64 room)
{
    const auto pointed = pointedLists();
    const qint64 thumbnail = writtenThumbnail();
    if (thumbnail <= kMostInASegment) {
        if (thumbnail + lumi::sizeOfTags(pointed, thumbnail) > room) {
            dropThumbnail();
        }
        room -= writtenThumbnail();
    }
    lumi::fitTags(pointed, room);
    for (const lumi::ExifTagList *list : pointed) {
        room -= lumi::ifdSize(*list);
    }
    lumi::ExifTagList *const second[] = {&m_ifd1};
    lumi::fitTags(second, room);
    const bool isNamed
        = m_ifd1.findNumber(lumi::kThumbnailOffset) && m_ifd1.findNumber(lumi::kThumbnailLength);
    if (thumbnail > 0 && !isNamed) {
        dropThumbnail();
    }
}

void FPVExifDocument::dropThumbnail()
{
    m_ifd1.removeNumber(lumi::kThumbnailOffset);
    m_ifd1.removeNumber(lumi::kThumbnailLength);
    m_thumbnailOffset = 0;
    m_thumbnailLength = 0;
}

qint64 FPVExifDocument::writtenThumbnail() const
{
    const bool isNamed = m_ifd1.findNumber(lumi::kThumbnailOffset) != nullptr;
    const bool isWhole = m_thumbnailLength <= size() - m_tiffBase - m_thumbnailOffset;
    return hasThumbnail() && isNamed && isWhole ? m_thumbnailLength : 0;
}
