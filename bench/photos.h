// SPDX-License-Identifier: MIT
// Photos for the measurements: noise over gradients compresses about as badly as a real
// photograph, which is what decoding time depends on.
#pragma once

#include <QSize>
#include <QString>

namespace lumi::bench {

/// Writes a baseline colour JPEG without an Exif block. \return whether it is on the disk
[[nodiscard]] bool makePhoto(const QString &path, QSize size);

/// Writes a photo that is too large for a QImage, by repeating a few lines.
[[nodiscard]] bool makeHugePhoto(const QString &path, QSize size);

/// The same as makePhoto() with an Exif block that holds a thumbnail of 160 x 120.
[[nodiscard]] bool makePhotoWithThumbnail(const QString &path, QSize size);

/// Fills a new folder with `count` one-block JPEG files named IMG_00001.JPG and on.
[[nodiscard]] bool makeFolder(const QString &path, int count);

/// Like makeFolder(), with photos of 640 x 480.
[[nodiscard]] bool makeCameraFolder(const QString &path, int count);

} // namespace lumi::bench
