// SPDX-License-Identifier: MIT
// The tags that the walking reader finds in one photo; part of the photo's item. An object built
// with a path counts as loaded and never reads the file, so it has no tags and no thumbnail.
// The thumbnails of photos come from FPVExifDocument.
// Owns: tags and thumbnail.
#pragma once

#include "exif/tag/ExifTagList.h"

#include <QPixmap>
#include <QString>

#include <memory>

class FPVExifInfo
{
public:
    explicit FPVExifInfo(const QString &path);
    FPVExifInfo(const FPVExifInfo &) = delete;
    FPVExifInfo &operator=(const FPVExifInfo &) = delete;
    ~FPVExifInfo();

    /// The number of tags, or -1 if the file has no Exif block.
    int load(bool withThumbnail);

    /// The first tag of that number in any directory; null if there is none. Does not load.
    [[nodiscard]] FPVExifTag *findTag(int number) const;

    [[nodiscard]] const lumi::ExifTagList &tags() const { return m_tags; }

    /// A copy of the thumbnail that the caller owns, or null.
    [[nodiscard]] QPixmap *thumbnailPixmap();

    /// Reads the thumbnail again. The pixmap is valid until the next call; null if there is none.
    QPixmap *readThumbnail();

private:
    friend class TestFPVExifInfo; // resets m_loaded of an object with a path

    bool m_loaded = true;
    lumi::ExifTagList m_tags;
    std::unique_ptr<QPixmap> m_thumbnail;
    QString m_path;
};
