// SPDX-License-Identifier: MIT
#include "bench/photos.h"

#include "tests/support/ExifBuilder.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>

#include <cstdio>
#include <vector>

#include <jpeglib.h>

namespace {

constexpr int kQuality = 88;
/// Small, because it is never decoded.
constexpr QSize kCameraPhoto(640, 480);

QByteArray encoded(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    quint32 seed = 1;
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            seed = seed * 1664525U + 1013904223U;
            const int noise = static_cast<int>(seed >> 28);
            line[x] = qRgb(x * 200 / size.width() + noise, y * 200 / size.height() + noise,
                           (x ^ y) % 64 + noise);
        }
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", kQuality);
    return buffer.data();
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool fillFolder(const QString &path, int count, const QByteArray &photo)
{
    bool ok = QDir().mkpath(path);
    for (int i = 1; ok && i <= count; ++i) {
        ok = write(path + QString::asprintf("/IMG_%05d.JPG", i), photo);
    }
    return ok;
}

} // namespace

bool lumi::bench::makePhoto(const QString &path, QSize size)
{
    return write(path, encoded(size));
}

bool lumi::bench::makeHugePhoto(const QString &path, QSize size)
{
    constexpr int kSamples = 3;
    const auto lineBytes = static_cast<std::size_t>(size.width()) * kSamples;
    std::vector<JSAMPLE> band(lineBytes * DCTSIZE);
    quint32 seed = 1;
    for (JSAMPLE &sample : band) {
        seed = seed * 1664525U + 1013904223U;
        sample = static_cast<JSAMPLE>(100 + (seed >> 28));
    }
    std::FILE *file = std::fopen(QFile::encodeName(path).constData(), "wb");
    if (file == nullptr) {
        return false;
    }
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{}; // its handlers end the process
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    jpeg_stdio_dest(&info, file);
    info.image_width = static_cast<JDIMENSION>(size.width());
    info.image_height = static_cast<JDIMENSION>(size.height());
    info.input_components = kSamples;
    info.in_color_space = JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, kQuality, TRUE);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
        JSAMPROW line = band.data() + lineBytes * (info.next_scanline % DCTSIZE);
        jpeg_write_scanlines(&info, &line, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    return std::fclose(file) == 0;
}

bool lumi::bench::makePhotoWithThumbnail(const QString &path, QSize size)
{
    // The thumbnail's directory is the second one, so there must be a first.
    return test::ExifBuilder()
        .ascii(ExifListKind::Ifd0, 0x010F, "Anvil Works") // the make
        .photo(encoded(size))
        .thumbnail(encoded({160, 120}))
        .write(path);
}

bool lumi::bench::makeFolder(const QString &path, int count)
{
    return fillFolder(path, count, encoded({8, 8}));
}

bool lumi::bench::makeCameraFolder(const QString &path, int count)
{
    return fillFolder(path, count, encoded(kCameraPhoto));
}
