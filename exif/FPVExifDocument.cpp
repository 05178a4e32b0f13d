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
#include <optional>
#include <utility>

namespace {

// Directories, values and thumbnail for which a segment has room, as an even number.
constexpr qint64 kMostInASegment = 65518;
// A directory of two entries that hold their values.
constexpr qint64 kPlainNames = lumi::kBareDirectorySize + 2 * 12;

quint32 valueOf(const FPVExifTag *tag)
{
    return tag ? static_cast<quint32>(tag->intValue()) : 0;
}

/// Whatever its size, only its first word counts, and a new block has no more of it.
void shortenPointer(lumi::ExifTagList &list, int number)
{
    if (const FPVExifTag *pointer = list.findNumber(number)) {
        lumi::putPointer(list, number, valueOf(pointer));
    }
}

/// What a segment has left beside these.
qint64 roomBeside(lumi::ExifTagLists lists)
{
    qint64 room = kMostInASegment;
    for (const lumi::ExifTagList *list : lists) {
        room -= lumi::ifdSize(*list);
    }
    return room;
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
    shortenPointer(m_ifd0, lumi::kExifPointer);
    shortenPointer(m_ifd0, lumi::kGpsPointer);
    segment.giveBack(lumi::fitTags(mainLists(), kMostInASegment));
    if (!readPointed(segment, m_ifd0.findNumber(lumi::kExifPointer), ExifListKind::Exif)
        || !readPointed(segment, m_exif.findNumber(lumi::kInteroperabilityPointer),
                        ExifListKind::Interoperability)
        || !readPointed(segment, m_ifd0.findNumber(lumi::kGpsPointer), ExifListKind::Gps)
        || !readIfd1(segment)) {
        return false;
    }
    fitBlock();
    return true;
}

/// What is read is cut to size at once, or the values of one directory would leave none to be
/// held for the next.
bool FPVExifDocument::readPointed(lumi::ExifSegment &segment, const FPVExifTag *pointer,
                                  ExifListKind kind)
{
    const quint32 offset = valueOf(pointer);
    if (!pointer || !isAt(offset, kind, segment)) {
        return true;
    }
    const qint64 room = roomBeside(mainLists());
    lumi::ExifTagList &list = editableList(kind);
    quint32 unusedLink = 0;
    if (!segment.readIfd(offset, list, unusedLink)) {
        return false;
    }
    if (segment.kindOfIfd(offset) != kind) {
        lumi::ExifTagList *const alone[] = {&list};
        segment.giveBack(lumi::fitTags(alone, room));
    }
    segment.giveBack(lumi::fitTags(mainLists(), kMostInASegment));
    return true;
}

bool FPVExifDocument::readIfd1(lumi::ExifSegment &segment)
{
    m_ifd0Span = m_ifd1Offset - m_ifd0Offset;
    if (m_ifd1Offset == 0 || !isAt(m_ifd1Offset, ExifListKind::Ifd1, segment)) {
        return true;
    }
    if (!segment.readIfd(m_ifd1Offset, m_ifd1, m_nextIfdOffset)) {
        return false;
    }
    m_thumbnailLength = valueOf(m_ifd1.findNumber(lumi::kThumbnailLength));
    m_thumbnailOffset = valueOf(m_ifd1.findNumber(lumi::kThumbnailOffset));
    return true;
}

/// The directories that are said to be there, in the order in which they are read.
std::vector<ExifListKind> FPVExifDocument::namesOf(quint32 offset) const
{
    const std::pair<ExifListKind, quint32> places[]
        = {{ExifListKind::Exif, valueOf(m_ifd0.findNumber(lumi::kExifPointer))},
           {ExifListKind::Interoperability,
            valueOf(m_exif.findNumber(lumi::kInteroperabilityPointer))},
           {ExifListKind::Gps, valueOf(m_ifd0.findNumber(lumi::kGpsPointer))},
           {ExifListKind::Ifd1, m_ifd1Offset}};
    std::vector<ExifListKind> names;
    for (const auto &[kind, place] : places) {
        if (place == offset) {
            names.push_back(kind);
        }
    }
    return names;
}

/// A pointer outlives its directory and then leads to whatever came to stand there. That must
/// not be written into the next block a second time: what the user clears would stay in the
/// copy. So where there is doubt, a directory has to show what it is.
bool FPVExifDocument::isAt(quint32 offset, ExifListKind kind,
                           const lumi::ExifSegment &segment) const
{
    if (segment.wasRead(offset)) {
        return false;
    }
    const std::vector<ExifListKind> names = namesOf(offset);
    const bool isWhole = segment.holdsIfd(offset);
    if (isWhole && names.size() == 1) {
        return true;
    }
    const std::optional<ExifListKind> shown = segment.kindOfIfd(offset);
    const bool isNamed = shown && std::ranges::find(names, *shown) != names.end();
    return isNamed ? *shown == kind : isWhole && names.front() == kind;
}

std::array<lumi::ExifTagList *, 4> FPVExifDocument::mainLists()
{
    return {&m_ifd0, &m_exif, &m_interoperability, &m_gps};
}

/// The thumbnail goes like a value of its size, or first of all when its numbers are longer than
/// such are; interoperability goes with its pointer.
void FPVExifDocument::fitBlock()
{
    const auto lists = mainLists();
    const qint64 named = namedThumbnail();
    const bool isPlain = named - writtenThumbnail() <= kPlainNames;
    if (named + lumi::sizeOfTags(lists, isPlain ? named : kMostInASegment) > kMostInASegment) {
        dropThumbnail();
    }
    lumi::fitTags(lists, kMostInASegment - namedThumbnail());
    if (!m_exif.findNumber(lumi::kInteroperabilityPointer)) {
        m_interoperability.clear();
    }
    lumi::ExifTagList *const second[] = {&m_ifd1};
    lumi::fitTags(second, roomBeside(lists) - writtenThumbnail());
}

/// What the thumbnail takes of a new block with a directory that has its two tags alone.
qint64 FPVExifDocument::namedThumbnail() const
{
    const qint64 thumbnail = writtenThumbnail();
    return thumbnail == 0 ? 0
                          : thumbnail + lumi::kBareDirectorySize
            + lumi::entrySize(*m_ifd1.findNumber(lumi::kThumbnailOffset))
            + lumi::entrySize(*m_ifd1.findNumber(lumi::kThumbnailLength));
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
    const qint64 most = std::min(size() - m_tiffBase - m_thumbnailOffset, kMostInASegment);
    return hasThumbnail() && isNamed && m_thumbnailLength <= most ? m_thumbnailLength : 0;
}
