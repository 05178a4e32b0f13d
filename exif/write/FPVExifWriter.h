// SPDX-License-Identifier: MIT
// The Exif block of a photo to be changed: tags are set and removed in the lists that were
// read, then the photo is replaced by one with the changed block and the same image data. What
// was not changed is written as it was read, tags that nobody knows included; anything that
// the lists do not hold is dropped. exifBlockBytes has the layout, PhotoReplacement the way.
#pragma once

#include "exif/read/FPVExifDocument.h"
#include "exif/write/PhotoReplacement.h"

class FPVExifWriter : public FPVExifDocument
{
public:
    explicit FPVExifWriter(const QString &path);
    ~FPVExifWriter() override;

    /// Copies count values of that type from data, numbers in host order. They replace the tag
    /// of that number at its place, or make a new last one. Null data removes the tag. A
    /// number outside ExifListKind means the first list.
    void setTag(quint16 tag, quint16 type, quint32 count, const void *data, ExifListKind kind);

    /// Removes the tag of that number, if there is one.
    void removeTag(quint16 tag, ExifListKind kind);

    /// The length of the segment that rewrite() would write. Its field has 16 bits, and rewrite()
    /// does not check that they are enough. This sets the tags that say where a directory stands.
    [[nodiscard]] qint64 segmentLength();

    /// Replaces the photo: an ExifRewriteResult as a number. It fails when the file was changed
    /// since just before the block was read. It works once, since the old photo is gone then; after a
    /// failure that left the photo open it may be tried again.
    [[nodiscard]] int rewrite();

private:
    FPVExifWriter(const QString &path, const struct stat &state);

    [[nodiscard]] QByteArray photoStart();
    [[nodiscard]] lumi::ByteRange thumbnailRange() const;

    struct stat m_state; // of the photo before its block was read
};
