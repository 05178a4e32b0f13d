// SPDX-License-Identifier: MIT
#include "items/FPVItemImage.h"

#include "exif/read/FPVExifDocument.h"
#include "items/Orientation.h"
#include "items/photoScale.h"
#include "swap/swapStore.h"

#include <QImage>
#include <QPixmap>

FPVItemImage::FPVItemImage(const QString &path, const QString &displayName, bool checked)
    : FPVItemObject(path, displayName, checked)
{ }

int FPVItemImage::itemKind() const
{
    return static_cast<int>(lumi::ItemKind::Picture);
}

int FPVItemImage::kindFlag1() const
{
    return 1;
}

int FPVItemImage::kindFlag2() const
{
    return 1;
}

QPixmap *FPVItemImage::thumbnail(int w, int h)
{
    const QSize box(w, h);
    const std::unique_ptr<QImage> embedded(FPVExifDocument::thumbnail(path()));
    if (embedded) {
        const auto orientation = lumi::Orientation::of(path());
        const QSize size = lumi::fittedSize(orientation.turned(embedded->size()), box);
        return lumi::newPixmap(orientation.scaled(*embedded, size));
    }
    QSize size = fitSize(box);
    std::unique_ptr<QPixmap> pixmap(decodedPixmap(size.width(), size.height()));
    if (pixmap && fitSize(box) != size) {
        // The decode found that the photo has been replaced.
        size = fitSize(box);
        pixmap.reset(decodedPixmap(size.width(), size.height()));
    }
    SwapSetSize(path(), &size);
    return pixmap.release();
}

QSize FPVItemImage::imageSize()
{
    return {-1, -1};
}

QSize FPVItemImage::fitSize(QSize box)
{
    if (recordedSize().isEmpty()) {
        m_recordedSize = imageSize();
    }
    return lumi::fittedSize(m_recordedSize, box);
}

QImage *FPVItemImage::scaledImage(int /*w*/, int /*h*/)
{
    return nullptr;
}

QPixmap *FPVItemImage::scaledPixmap(int w, int h)
{
    if (w <= 0 || h <= 0) {
        return nullptr;
    }
    auto *pixmap = new QPixmap(w, h);
    pixmap->fill(Qt::blue);
    return pixmap;
}

QPixmap *FPVItemImage::decodedPixmap(int w, int h)
{
    return scaledPixmap(w, h);
}

bool FPVItemImage::startDecode(int /*depth*/, QSize * /*outSize*/, QSize * /*request*/)
{
    return false;
}

uchar *FPVItemImage::decodedRaster(int /*depth*/, QSize * /*outSize*/, QSize * /*request*/)
{
    return nullptr;
}

uchar *FPVItemImage::rasterBits()
{
    return nullptr;
}

void FPVItemImage::releaseDecode() { }

void FPVItemImage::abortDecode() { }

lumi::DecodeError FPVItemImage::errorCode() const
{
    return lumi::DecodeError::Undecodable;
}

bool FPVItemImage::inDecodeComplete() const
{
    return false;
}

void FPVItemImage::setInDecodeComplete(bool /*on*/) { }

std::unique_ptr<uchar[]> FPVItemImage::takeRaster()
{
    return nullptr;
}

bool FPVItemImage::refreshSize()
{
    return false;
}

int FPVItemImage::decodedLines(QSize raster) const
{
    return raster.height();
}

QSize FPVItemImage::recordedSize()
{
    if (m_recordedSize.isEmpty() && !SwapGetSize(path(), &m_recordedSize)) {
        m_recordedSize = QSize();
    }
    return m_recordedSize;
}

bool FPVItemImage::correctRecordedSize(QSize photo)
{
    const QSize recorded = recordedSize();
    if (photo.isEmpty() || recorded.isEmpty() || lumi::isThumbnailSizeOf(photo, recorded)) {
        return false;
    }
    m_recordedSize = photo;
    return true;
}

QPixmap *lumi::newPixmap(const QImage &image)
{
    QPixmap pixmap = QPixmap::fromImage(image);
    return pixmap.isNull() ? nullptr : new QPixmap(std::move(pixmap));
}
