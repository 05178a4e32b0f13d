// SPDX-License-Identifier: MIT
// Replaces a photo by one with a new start. The new photo is written whole under a temporary name
// in the same folder and synced. Only then is the old photo removed, and the new one renamed to
// its name. Until the removal the old photo is untouched; after it the new one is whole, under the
// temporary name if the renaming failed. A photo that has changed since its block was read is not
// replaced. No copy of the old photo is kept: there is seldom room for two, let alone three.
#pragma once

#include "platform/NewFile.h"

#include <QFile>

#include <sys/stat.h>

/// What became of the photo.
enum class ExifRewriteResult : int {
    Done = 0,   // replaced; or writing failed although there is room, and nothing was changed
    NoRoom = 1, // nothing was changed
    Failed = 2, // nothing was changed, or the new photo kept its temporary name
};

namespace lumi {

struct ByteRange
{
    qint64 place = 0;
    qint64 length = 0;
};

class PhotoReplacement
{
public:
    /// The photo is lent, open for reading. It is closed once the new one is complete. state is
    /// the stateOf() its path before its block was read; one of zeros fits no photo.
    PhotoReplacement(QFile &photo, const struct stat &state);

    /// Makes the new photo of start, the bytes of the old one in thumbnail, a zero byte when
    /// that leaves an odd sum, and all bytes of the old one from rest on.
    [[nodiscard]] ExifRewriteResult run(const QByteArray &start, ByteRange thumbnail, qint64 rest);

private:
    [[nodiscard]] bool isUnchanged() const;
    [[nodiscard]] bool fill(NewFile &fresh, const QByteArray &start, ByteRange thumbnail,
                            qint64 rest);
    [[nodiscard]] bool copy(NewFile &fresh, ByteRange range);
    [[nodiscard]] ExifRewriteResult exchange(const QString &temporary);
    void drop(const QString &temporary) const;
    [[nodiscard]] ExifRewriteResult failure(int error, ExifRewriteResult other) const;
    [[nodiscard]] bool hasRoom() const;

    QFile &m_photo;
    QString m_path;
    struct stat m_state; // of the photo before its block was read
};

/// What tells the file at path from any other and from itself after a change: device, inode,
/// size and time of the last write among the rest. Zeros without a file.
[[nodiscard]] struct stat stateOf(const QString &path);

/// The first of "photo_tmp_0.jpg", "photo_tmp_1.jpg" and so on that no file in the folder of
/// photo.jpg has; empty when 65535 are taken.
[[nodiscard]] QString freeTemporaryPath(const QString &path);

} // namespace lumi
