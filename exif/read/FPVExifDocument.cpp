// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifDocument.h"

#include "exif/read/ExifSegment.h"
#include "exif/read/embeddedPicture.h"
#include "exif/tag/tagNumbers.h"

#include <QFileInfo>
#include <QImage>

#include <utility>

namespace {

quint32 valueOf(const FPVExifTag *tag)
{
    return tag ? static_cast<quint32>(tag->intValue()) : 0;
}

} // namespace

FPVExifDocument::FPVExifDocument(const QString &path)
    : QFile(path)
{
    // Opening a pipe or a device could block forever.
    if (path.isEmpty() || !QFileInfo(path).isFile()
        || !open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return;
    }
    m_valid = readAll();
    if (!m_valid) {
        close();
    }
}

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
    m_ifd0Span = m_ifd1Offset - m_ifd0Offset;
    return readPointed(segment);
}

/// A stale pointer can point to the directory of another kind. So the safest kinds are read first:
/// a GPS directory is recognised by its tags, and the link to the second directory never goes
/// stale. Interoperability is last, because its pointer is written even if there is no such
/// directory.
bool FPVExifDocument::readPointed(lumi::ExifSegment &segment)
{
    quint32 unusedLink = 0;
    if (!readOne(segment, valueOf(m_ifd0.findNumber(lumi::kTagGpsPointer)), ExifListKind::Gps,
                 unusedLink)
        || !readOne(segment, m_ifd1Offset, ExifListKind::Ifd1, m_nextIfdOffset)
        || !readOne(segment, valueOf(m_ifd0.findNumber(lumi::kTagExifPointer)), ExifListKind::Exif,
                    unusedLink)
        || !readOne(segment, valueOf(m_exif.findNumber(lumi::kTagInteroperabilityPointer)),
                    ExifListKind::Interoperability, unusedLink)) {
        return false;
    }
    m_thumbnailLength = valueOf(m_ifd1.findNumber(lumi::kTagThumbnailLength));
    m_thumbnailOffset = valueOf(m_ifd1.findNumber(lumi::kTagThumbnailOffset));
    return true;
}

bool FPVExifDocument::readOne(lumi::ExifSegment &segment, quint32 offset, ExifListKind kind,
                              quint32 &link)
{
    return !segment.holdsIfd(offset, kind) || segment.readIfd(offset, editableList(kind), link);
}
