// SPDX-License-Identifier: MIT
// Mail-sized copies of photos: JPEG files of at most 640 x 480 in their own folder of the photo
// store, named after the day and a running number. Nothing here shows a message.
#pragma once

#include <QImage>
#include <QString>

class FPVItemImage;
class QDate;

namespace lumi {

/// Absolute path of the folder, existing or not.
[[nodiscard]] QString mailFolderPath();

/// Name of the copy with this number. Month and day are not padded, so two days may have the same
/// names; only the number differs then.
[[nodiscard]] QString mailFileName(QDate date, int number);

/// The first path of the day that is free, null if all 999 are taken.
[[nodiscard]] QString freeMailPath(QDate date);

/// The photo, scaled down if it is too large. Null if it is not a regular file, can't be read, or
/// needs more memory than is free.
[[nodiscard]] QImage mailImage(FPVItemImage *item);

/// Writes the image as JPEG into a new file and makes the folder if it is missing. A failure leaves
/// no file, and an existing file is never changed.
[[nodiscard]] bool saveMailImage(const QImage &image, const QString &path);

} // namespace lumi
