// SPDX-License-Identifier: MIT
#include "files/mailCopy.h"

#include "app/common/memory.h"
#include "app/common/paths.h"
#include "items/FPVItemImage.h"
#include "items/Orientation.h"
#include "items/photoScale.h"
#include "platform/files/NewFile.h"
#include "platform/files/fileCalls.h"
#include "views/folderRoots.h"

#include <QBuffer>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <memory>

namespace {

constexpr int kLastNumber = 999;
constexpr QSize kLargest(640, 480);
/// Of the pictures that the image library returns.
constexpr int kUsualBitsAPixel = 32;

bool isSmall(QSize size)
{
    return size.width() <= kLargest.width() && size.height() <= kLargest.height();
}

/// A copy of the pixels, without colour profile, texts and resolution.
QImage withoutMetadata(const QImage &image)
{
    if (image.isNull()) {
        return {};
    }
    QImage pixels(image.constBits(), image.width(), image.height(), image.bytesPerLine(),
                  image.format());
    pixels.setColorTable(image.colorTable());
    return pixels.copy();
}

/// Scaling may copy the whole picture, so a large one must fit twice.
bool hasMemoryFor(const QImageReader &reader)
{
    const QSize size = reader.size();
    const QImage::Format format = reader.imageFormat();
    const bool isKnown = format > QImage::Format_Invalid && format < QImage::NImageFormats;
    const int depth = isKnown ? QImage::toPixelFormat(format).bitsPerPixel() : 0;
    const qint64 needKB = lumi::screenNeedKB(size.width(), size, std::max(depth, kUsualBitsAPixel));
    return isSmall(size) || (needKB <= freeMemoryKB() && 2 * needKB <= lumi::kMostThumbnailKB);
}

/// Loads a file of any format that the image library knows; the items know JPEG only.
QImage loadSmall(const QString &path)
{
    QImageReader reader(path);
    if (!hasMemoryFor(reader)) {
        return {};
    }
    const QImage image = reader.read();
    if (image.isNull()) {
        return {};
    }
    const auto orientation = lumi::Orientation::of(path);
    const QSize size = orientation.turned(image.size());
    return withoutMetadata(
        orientation.scaled(image, isSmall(size) ? size : lumi::fittedSize(size, kLargest)));
}

/// The image library does not limit the number of scans, so the item decodes the photo first.
bool isDecodable(FPVItemImage *item, QSize size)
{
    const std::unique_ptr<QImage> image(item->scaledImage(size.width(), size.height()));
    return image != nullptr;
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
    // Reading a pipe would block.
    if (!QFileInfo(item->path()).isFile()) {
        return {};
    }
    item->refreshSize();
    const QSize size = item->imageSize();
    // The image library would allocate the memory that the item refused.
    if (!size.isValid() && item->errorCode() == lumi::DecodeError::OutOfMemory) {
        return {};
    }
    // A file of another format has no valid size, which counts as small.
    if (isSmall(size)) {
        return !size.isValid() || isDecodable(item, size) ? loadSmall(item->path()) : QImage();
    }
    const QSize fitted = item->fitSize(kLargest);
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
