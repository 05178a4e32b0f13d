// SPDX-License-Identifier: MIT
// Decodes the small picture that a photo carries for previews. It comes from a file that
// anybody may have written, so it is held to what a preview can be: a JPEG picture of at most
// a megabyte and two megapixels, with no more passes than a photo has.
#pragma once

#include <QImage>

class QFile;

namespace lumi {

/// The picture in `length` bytes of the open file from `place` on. Null when they are not all
/// there, are no such picture, or when there is no memory for it.
[[nodiscard]] QImage embeddedPicture(QFile &file, qint64 place, qint64 length);

} // namespace lumi
