// SPDX-License-Identifier: MIT
// Makes JPEG streams in the forms a collection holds: baseline, progressive, gray, with the
// Exif block where cameras put it, right behind the start of the stream.
#pragma once

#include <QByteArray>
#include <QImage>

namespace lumi::photos {

struct JpegForm
{
    int quality = 88;
    bool progressive = false;
    bool gray = false;
    /// A JFIF segment, as picture programs write it; cameras write none.
    bool jfif = false;
};

[[nodiscard]] QByteArray encodeJpeg(const QImage &image, const JpegForm &form);

/// The stream with an APP1 segment of this payload behind its first two bytes.
[[nodiscard]] QByteArray withExif(const QByteArray &jpeg, const QByteArray &payload);

} // namespace lumi::photos
