// SPDX-License-Identifier: MIT
// Replaces a photo by one with a new start. The new photo is written and synced under a temporary
// name in the same folder. Only then is the old photo removed and the new one renamed to its name.
// If the renaming fails, the new photo keeps the temporary name. A photo that was changed since its
// block was read is not replaced. There is no backup of the old photo: cards seldom have room for
// it.
#pragma once

#include "platform/files/NewFile.h"

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
    /// The photo must be open for reading. It is closed when the new one is complete. state is the
    /// stateOf() the photo before its block was read.
    PhotoReplacement(QFile &photo, const struct stat &state);

    /// The new photo is start, the bytes of the old one in thumbnail, a zero byte if the sum is odd
    /// so far, and the bytes of the old one from rest on.
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

/// The state of the file at path; zeros if there is none. Another file or a changed file has
/// another device, inode, size or time of modification.
[[nodiscard]] struct stat stateOf(const QString &path);

/// For photo.jpg the first free name of "photo_tmp_0.jpg", "photo_tmp_1.jpg" and so on, in the same
/// folder; empty if 65535 names are taken.
[[nodiscard]] QString freeTemporaryPath(const QString &path);

} // namespace lumi
