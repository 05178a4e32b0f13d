// SPDX-License-Identifier: MIT
// A photo in a folder of its own, to be rewritten while something goes wrong, and all the
// calls on the way.
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

    /// The calls of a rewriting in which nothing goes wrong.
    [[nodiscard]] static const QStringList &steps();

    /// The first of these steps.
    [[nodiscard]] static int stepOf(const char *step);

    /// A photo whose thumbnail is of an odd size and whose image data take three blocks.
    [[nodiscard]] static const QByteArray &oldPhoto();

    /// The same after save().
    [[nodiscard]] static const QByteArray &newPhoto();

    /// Changes a tag and rewrites the photo: the result of that.
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
