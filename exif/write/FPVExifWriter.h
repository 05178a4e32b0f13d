// SPDX-License-Identifier: MIT
// Changes the Exif block of a photo. Tags are set and removed in the lists that were read. Then the
// photo is replaced by one with the new block and the same image data. Tags that were not changed
// are written as they were read, including unknown ones. Anything else in the old block is dropped.
#pragma once

#include "exif/read/FPVExifDocument.h"
#include "exif/write/PhotoReplacement.h"

class FPVExifWriter : public FPVExifDocument
{
public:
    explicit FPVExifWriter(const QString &path);

    /// Sets a tag to count values of that type, copied from data, numbers in host order. It
    /// replaces the tag of that number in its place, or becomes the last one. Null data removes the
    /// tag. A number outside ExifListKind means the first list.
    void setTag(quint16 tag, quint16 type, quint32 count, const void *data, ExifListKind kind);

    /// Removes the tag of that number, if there is one.
    void removeTag(quint16 tag, ExifListKind kind);

    /// The length of the segment that rewrite() would write. rewrite() does not check that it is at
    /// most kLongestSegment. Changes the pointer tags in the lists.
    [[nodiscard]] qint64 segmentLength();

    /// Replaces the photo and returns an ExifRewriteResult. Fails if the file was changed since
    /// just before its block was read. Succeeds only once, because the old photo is gone then.
    /// After a failure that left the file open it can be called again.
    [[nodiscard]] int rewrite();

private:
    FPVExifWriter(const QString &path, const struct stat &state);

    [[nodiscard]] QByteArray photoStart();
    [[nodiscard]] lumi::ByteRange thumbnailRange() const;

    struct stat m_state; // of the photo before its block was read
};
