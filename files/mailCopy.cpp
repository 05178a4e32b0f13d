// SPDX-License-Identifier: MIT
#include "files/mailCopy.h"

#include "app/common/memory.h"
#include "app/common/paths.h"
#include "items/FPVItemImage.h"
#include "items/photoScale.h"
#include "platform/NewFile.h"
#include "platform/fileCalls.h"
#include "views/folderRoots.h"

#include <QBuffer>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <cstdlib>
#include <memory>

using lumi::DecodeError;

namespace {

constexpr int kLastNumber = 999;
constexpr QSize kLargest(640, 480);
/// Of the image library's pictures.
constexpr int kBitsAPixel = 32;
/// What the pixels of a small picture make of a side of kLargest.
constexpr int kMostRounding = 16;

bool isSmall(QSize size)
{
    return size.width() <= kLargest.width() && size.height() <= kLargest.height();
}

/// Of whatever format the file is: the image library knows more than photos have.
QImage loadSmall(const QString &path)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!isSmall(size) && lumi::screenNeedKB(size.width(), size, kBitsAPixel) > freeMemoryKB()) {
        return {};
    }
    const QImage image = reader.read();
    if (isSmall(image.size())) {
        return image;
    }
    return image.scaled(lumi::fittedSize(image.size(), kLargest), Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

/// The proportions that are kept of a photo are those of a small picture, of whole pixels; or of
/// another photo that had this name before.
QSize mailSize(FPVItemImage *item, QSize size)
{
    const QSize kept = item->fitSize(kLargest);
    const QSize own = lumi::fittedSize(size, kLargest);
    const bool isAlike = std::abs(kept.width() - own.width()) <= kMostRounding
        && std::abs(kept.height() - own.height()) <= kMostRounding;
    return isAlike ? kept : own;
}

} // namespace

QString lumi::mailFolderPath()
{
    return photoStorePath() + QLatin1String("/mail");
}

QString lumi::mailFileName(QDate date, int number)
{
    return QString::asprintf("!%d%d%d_%03d.jpg", date.year(), date.month(), date.day(), number);
}

QString lumi::freeMailPath(QDate date)
{
    for (int number = 1; number <= kLastNumber; ++number) {
        QString path = mailFolderPath() + QLatin1Char('/') + mailFileName(date, number);
        if (!isTaken(path)) {
            return path;
        }
    }
    return {};
}

QImage lumi::mailImage(FPVItemImage *item)
{
    // Reading a pipe would wait for ever.
    if (!QFileInfo(item->path()).isFile()) {
        return {};
    }
    const QSize size = item->imageSize();
    // The image library would take the memory that the photo was refused.
    if (!size.isValid() && item->errorCode() == DecodeError::OutOfMemory) {
        return {};
    }
    // An unknown size goes the first way too.
    if (isSmall(size)) {
        return loadSmall(item->path());
    }
    const QSize fitted = mailSize(item, size);
    const std::unique_ptr<QImage> scaled(item->scaledImage(fitted.width(), fitted.height()));
    return scaled ? *scaled : QImage();
}

bool lumi::saveMailImage(const QImage &image, const QString &path)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "JPEG")) {
        return false;
    }
    // A failure shows when the file is written.
    QDir().mkpath(QFileInfo(path).path());
    return writeNewFile(path, bytes) == 0;
}
