// SPDX-License-Identifier: MIT
// Decodes the thumbnail embedded in a photo. The file may be hostile, so only a JPEG picture of at
// most 1 MiB, 2 megapixels and 100 scans is decoded.
#pragma once

#include <QImage>

class QFile;

namespace lumi {

/// The picture in length bytes of the open file from place on. Null if the file is too short, if
/// the bytes are no such picture, or if there is too little memory.
[[nodiscard]] QImage embeddedPicture(QFile &file, qint64 place, qint64 length);

} // namespace lumi
