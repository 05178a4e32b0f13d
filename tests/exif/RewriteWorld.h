// SPDX-License-Identifier: MIT
// A photo in its own folder, to be rewritten while something goes wrong, and the system calls of a
// rewrite.
#pragma once

#include "exif/write/FPVExifWriter.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/RewriteFolder.h"
#include "tests/support/FileFaults.h"

#include <QFileInfo>

namespace lumi::test {

class RewriteWorld
{
public:
    static constexpr int kPhotoSize = 30000;

    /// Writes the photo.
    RewriteWorld();

    /// The system calls of a rewrite without errors.
    [[nodiscard]] static const QStringList &steps();

    /// The index of the first call with this name.
    [[nodiscard]] static int stepOf(const char *step);

    /// A photo with a thumbnail of an odd size and three blocks of image data.
    [[nodiscard]] static const QByteArray &oldPhoto();

    /// The same photo after save().
    [[nodiscard]] static const QByteArray &newPhoto();

    /// Changes a tag, rewrites the photo and returns the result.
    static int save(FPVExifWriter *writer);

    /// Writes the old photo again.
    void reset() { folder.put(oldPhoto()); }

    [[nodiscard]] bool isOld() const { return contentOf(path) == oldPhoto(); }

    [[nodiscard]] bool isNew() const { return contentOf(path) == newPhoto(); }

    [[nodiscard]] bool hasTemporary() const { return QFileInfo(temporary).exists(); }

    RewriteFolder folder;
    QString place; ///< path of the folder
    QString path;
    QString temporary;
};

} // namespace lumi::test
