// SPDX-License-Identifier: MIT
#include "tools/photos/JpegFile.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

namespace lumi::photos {

namespace {

/// One line of the image in the components of the stream, 3 bytes a pixel or 1.
void fillRow(const QImage &image, int y, bool gray, std::vector<JSAMPLE> &row)
{
    const auto *pixels = reinterpret_cast<const QRgb *>(image.constScanLine(y));
    std::size_t at = 0;
    for (int x = 0; x < image.width(); ++x) {
        if (gray) {
            row[at++] = static_cast<JSAMPLE>(qGray(pixels[x]));
            continue;
        }
        row[at++] = static_cast<JSAMPLE>(qRed(pixels[x]));
        row[at++] = static_cast<JSAMPLE>(qGreen(pixels[x]));
        row[at++] = static_cast<JSAMPLE>(qBlue(pixels[x]));
    }
}

} // namespace

QByteArray encodeJpeg(const QImage &picture, const JpegForm &form)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    jpeg_compress_struct compress{};
    jpeg_error_mgr errors{};
    // The library's own handler ends the program: without memory there is no photo to make.
    compress.err = jpeg_std_error(&errors);
    jpeg_create_compress(&compress);
    unsigned char *stream = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&compress, &stream, &size);
    compress.image_width = static_cast<JDIMENSION>(image.width());
    compress.image_height = static_cast<JDIMENSION>(image.height());
    compress.input_components = form.gray ? 1 : 3;
    compress.in_color_space = form.gray ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&compress);
    jpeg_set_quality(&compress, form.quality, TRUE);
    compress.write_JFIF_header = form.jfif ? TRUE : FALSE;
    if (form.progressive) {
        jpeg_simple_progression(&compress);
    }
    jpeg_start_compress(&compress, TRUE);
    std::vector<JSAMPLE> row(static_cast<std::size_t>(image.width())
                             * static_cast<std::size_t>(compress.input_components));
    for (int y = 0; y < image.height(); ++y) {
        fillRow(image, y, form.gray, row);
        JSAMPROW line = row.data();
        jpeg_write_scanlines(&compress, &line, 1);
    }
    jpeg_finish_compress(&compress);
    jpeg_destroy_compress(&compress);
    QByteArray result(reinterpret_cast<const char *>(stream), static_cast<qsizetype>(size));
    std::free(stream);
    return result;
}

QByteArray withExif(const QByteArray &jpeg, const QByteArray &payload)
{
    const qsizetype length = payload.size() + 2;
    QByteArray segment("\xFF\xE1", 2);
    segment.append(static_cast<char>((length >> 8) & 0xFF));
    segment.append(static_cast<char>(length & 0xFF));
    return jpeg.left(2) + segment + payload + jpeg.mid(2);
}

} // namespace lumi::photos
