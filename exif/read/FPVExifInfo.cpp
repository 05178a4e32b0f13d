// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifInfo.h"

#include "exif/read/FPVExifFile.h"
#include "exif/read/embeddedPicture.h"
#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"

#include <QFile>
#include <QImage>

namespace {

QImage readImage(const QString &path, qint64 place, int length)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? lumi::embeddedPicture(file, place, length) : QImage();
}

} // namespace

FPVExifInfo::FPVExifInfo(const QString &path)
    : m_path(path)
{ }

FPVExifInfo::~FPVExifInfo() = default;

int FPVExifInfo::load(bool withThumbnail)
{
    if (m_path.isEmpty()) {
        m_loaded = false;
    }
    if (m_loaded) {
        return m_tags.count();
    }
    FPVExifFile file(m_path);
    if (!file.isOpen()) {
        return -1;
    }
    m_tags.clear();
    while (FPVExifTag *tag = file.nextTag()) {
        m_tags.append(tag);
    }
    if (withThumbnail) {
        m_loaded = true; // readThumbnail() calls load()
        readThumbnail();
    }
    return m_tags.count();
}

FPVExifTag *FPVExifInfo::findTag(int number) const
{
    return m_tags.findNumber(number);
}

QPixmap *FPVExifInfo::thumbnailPixmap()
{
    if (!m_thumbnail) {
        readThumbnail();
    }
    return m_thumbnail ? new QPixmap(*m_thumbnail) : nullptr;
}

QPixmap *FPVExifInfo::readThumbnail()
{
    load(true);
    m_thumbnail.reset();
    const FPVExifTag *offset = findTag(lumi::kTagThumbnailOffset);
    const FPVExifTag *length = findTag(lumi::kTagThumbnailLength);
    if (offset && length) {
        const QImage image
            = readImage(m_path, offset->intValue() + qint64{lumi::kTiffBase}, length->intValue());
        if (!image.isNull()) {
            m_thumbnail = std::make_unique<QPixmap>(QPixmap::fromImage(image));
        }
    }
    return m_thumbnail.get();
}
