// SPDX-License-Identifier: MIT
#include "exif/read/embeddedPicture.h"

#include "app/common/memory.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

namespace {

constexpr qint64 kMostBytes = qint64(1024) * 1024;
constexpr qint64 kMostPixels = qint64(2) * 1024 * 1024;
/// Each scan is a pass over the whole picture. A photo has about ten.
constexpr qsizetype kMostScans = 100;
constexpr int kBytesPerPixel = 4;
/// The decoder holds a picture of several scans whole: two bytes for each of up to four samples.
constexpr int kHeldBytesPerPixel = 8;
constexpr int kReserveKB = 1024;

bool isAllowed(QSize size, qsizetype scans)
{
    const qint64 pixels = qint64{size.width()} * size.height();
    const int bytesPerPixel = kBytesPerPixel + (scans > 1 ? kHeldBytesPerPixel : 0);
    return !size.isEmpty() && pixels <= kMostPixels
        && pixels * bytesPerPixel / 1024 + kReserveKB <= freeMemoryKB();
}

/// The marker of the frame header; 0 if there is a gap between the segments before it.
int frameMarker(const QByteArray &jpeg)
{
    constexpr qsizetype kMarkerBytes = 2;
    constexpr int kHuffmanTables = 0xC4;
    constexpr int kArithmeticTables = 0xCC;
    qsizetype at = kMarkerBytes;
    while (at + 2 * kMarkerBytes <= jpeg.size() && jpeg[at] == '\xFF') {
        const int marker = static_cast<uchar>(jpeg[at + 1]);
        if ((marker & 0xF0) == 0xC0 && marker != kHuffmanTables && marker != kArithmeticTables) {
            return marker;
        }
        at += kMarkerBytes + qFromBigEndian<quint16>(jpeg.constData() + at + kMarkerBytes);
    }
    return 0;
}

/// Baseline, extended and progressive pictures. Arithmetic coding is refused: no camera writes it,
/// and few bytes can take very long to decode.
bool isHuffmanCoded(const QByteArray &jpeg)
{
    const int marker = frameMarker(jpeg);
    return marker >= 0xC0 && marker <= 0xC2;
}

} // namespace

QImage lumi::embeddedPicture(QFile &file, qint64 place, qint64 length)
{
    if (length <= 0 || length > kMostBytes || place < 0 || length > file.size() - place
        || !file.seek(place)) {
        return QImage();
    }
    QByteArray bytes = file.read(length);
    // This marker cannot occur inside the data of a scan.
    const qsizetype scans = bytes.count("\xFF\xDA");
    if (bytes.size() != length || scans > kMostScans || !isHuffmanCoded(bytes)) {
        return QImage();
    }
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "JPEG");
    return isAllowed(reader.size(), scans) ? reader.read() : QImage();
}
