// SPDX-License-Identifier: MIT
// The texts of the import as functions of plain values.
#pragma once

#include <QString>
#include <QStringList>

class QDate;

namespace lumi {

/// The number with commas as thousands separators.
[[nodiscard]] QString groupedNumber(int number);

/// Label of the free memory. @param freeKB -1 if unknown
[[nodiscard]] QString memoryText(int freeKB);
/// Whether the label is shown as a warning.
[[nodiscard]] bool isMemoryLow(int freeKB);
/// Label with the number of cards of the usual sizes that would fit.
[[nodiscard]] QString capacityText(int freeKB);

/// Whether the files need more space than is free, with a margin.
/// @param bytes negative if their sum has wrapped around
[[nodiscard]] bool mayNotFit(int bytes, int freeKB);
/// The number of paths with a JPEG extension.
[[nodiscard]] int photoCount(const QStringList &paths);
/// The result of a search. @param bytes of all files, not only of photos
[[nodiscard]] QString foundText(const QString &source, int photos, int bytes);

/// The suggested name of the new folder.
[[nodiscard]] QString defaultFolderName(QDate date);
[[nodiscard]] QString copiedText(const QString &folder, int files);
/// The same after a run with failures.
[[nodiscard]] QString partlyCopiedText(const QString &folder, int files);

/// The displayed name of the card that contains path, else of the photo store.
[[nodiscard]] QString sourceName(const QString &path);

} // namespace lumi
