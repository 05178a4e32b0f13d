// SPDX-License-Identifier: MIT
// What the walking reader gives for one photo, kept with the photo's item. Built with a path
// it counts as loaded and never reads the file, so its tags stay empty and it has no
// thumbnail; the thumbnails of photos come from FPVExifDocument.
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

    /// The number of tags held, or -1 when the file holds no Exif block to walk.
    int load(bool withThumbnail);

    /// The first tag of that number whatever directory it is from, lent; null without one. It
    /// reads nothing.
    [[nodiscard]] FPVExifTag *findTag(int number) const;

    [[nodiscard]] const lumi::ExifTagList &tags() const { return m_tags; }

    /// A new copy of the thumbnail for the caller, or null.
    [[nodiscard]] QPixmap *thumbnailPixmap();

    /// Reads the thumbnail anew. It is lent until the next call; null without one.
    QPixmap *readThumbnail();

private:
    friend class TestFPVExifInfo; // the only one who can unload an object with a path

    bool m_loaded = true;
    lumi::ExifTagList m_tags;
    std::unique_ptr<QPixmap> m_thumbnail;
    QString m_path;
};
