// SPDX-License-Identifier: MIT
#include "exif/embeddedPicture.h"

#include "app/common/memory.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

namespace {

constexpr qint64 kMostBytes = 1024 * 1024;
constexpr qint64 kMostPixels = 2 * 1024 * 1024;
/// A photo has about ten scans, each a pass over the whole picture.
constexpr qsizetype kMostScans = 100;
constexpr int kBytesPerPixel = 4;
constexpr int kReserveKB = 1024;

bool isAllowed(QSize size)
{
    const qint64 pixels = qint64{size.width()} * size.height();
    return !size.isEmpty() && pixels <= kMostPixels
        && pixels * kBytesPerPixel / 1024 + kReserveKB <= freeMemoryKB();
}

} // namespace

QImage lumi::embeddedPicture(QFile &file, qint64 place, qint64 length)
{
    if (length <= 0 || length > kMostBytes || place < 0 || length > file.size() - place
        || !file.seek(place)) {
        return QImage();
    }
    QByteArray bytes = file.read(length);
    // The mark of a scan never stands inside its data.
    if (bytes.size() != length || bytes.count("\xFF\xDA") > kMostScans) {
        return QImage();
    }
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "JPEG");
    return isAllowed(reader.size()) ? reader.read() : QImage();
}
