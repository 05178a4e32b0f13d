// SPDX-License-Identifier: MIT
#include "exif/write/FPVExifWriter.h"

#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"
#include "exif/write/exifBlockBytes.h"

FPVExifWriter::FPVExifWriter(const QString &path)
    : FPVExifWriter(path, lumi::stateOf(path))
{ }

/// The state is taken before the block is read, so that a change during the reading is noticed.
FPVExifWriter::FPVExifWriter(const QString &path, const struct stat &state)
    : FPVExifDocument(path)
    , m_state(state)
{ }

void FPVExifWriter::setTag(quint16 tag, quint16 type, quint32 count, const void *data,
                           ExifListKind kind)
{
    if (data == nullptr) {
        removeTag(tag, kind);
        return;
    }
    if (!isValid()) {
        return;
    }
    const std::size_t size = std::size_t(count) * static_cast<std::size_t>(typeSize(type));
    editableList(kind).put(std::make_unique<FPVExifTagBytes>(
        tag, type, count, std::span(static_cast<const char *>(data), size)));
}

void FPVExifWriter::removeTag(quint16 tag, ExifListKind kind)
{
    if (isValid()) {
        editableList(kind).removeNumber(tag);
    }
}

qint64 FPVExifWriter::segmentLength()
{
    const qint64 length = photoStart().size() - lumi::kSegmentLengthPlace + thumbnailRange().length;
    return length + length % 2;
}

int FPVExifWriter::rewrite()
{
    const qint64 rest = qint64(app1Length()) + lumi::kSegmentLengthPlace;
    // Without image data there is no photo to keep.
    if (!isValid() || size() <= rest) {
        return static_cast<int>(ExifRewriteResult::Failed);
    }
    return static_cast<int>(
        lumi::PhotoReplacement(*this, m_state).run(photoStart(), thumbnailRange(), rest));
}

QByteArray FPVExifWriter::photoStart()
{
    return lumi::photoStart({editableList(ExifListKind::Ifd0), editableList(ExifListKind::Exif),
                             editableList(ExifListKind::Interoperability),
                             editableList(ExifListKind::Gps), editableList(ExifListKind::Ifd1)},
                            static_cast<quint32>(thumbnailRange().length));
}

/// The thumbnail in the old file. Its length is 0 if it is not copied: the second directory has no
/// tag for its offset, or the file ends inside the thumbnail.
lumi::ByteRange FPVExifWriter::thumbnailRange() const
{
    const qint64 place = qint64(tiffBase()) + thumbnailOffset();
    const bool isCopied = hasThumbnail() && find(lumi::kTagThumbnailOffset, ExifListKind::Ifd1)
        && thumbnailLength() <= size() - place;
    return {place, isCopied ? qint64(thumbnailLength()) : 0};
}
