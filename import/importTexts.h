// SPDX-License-Identifier: MIT
// The texts and numbers that the import shows, made from plain values.
#pragma once

#include <QString>
#include <QStringList>

class QDate;

namespace lumi {

/// The number with a comma before each group of three digits.
[[nodiscard]] QString groupedNumber(int number);

/// Label of the free memory. freeKB: -1 where it can't be asked.
[[nodiscard]] QString memoryText(int freeKB);
/// Whether the label is a warning.
[[nodiscard]] bool isMemoryLow(int freeKB);
/// Label that tells how many cards of the usual sizes would fit.
[[nodiscard]] QString capacityText(int freeKB);

/// Whether the files need more room than there is, with a margin. bytes: may be negative,
/// where their sum has wrapped round.
[[nodiscard]] bool mayNotFit(int bytes, int freeKB);
/// How many of the paths are JPEG photos by name.
[[nodiscard]] int photoCount(const QStringList &paths);
/// What a search found. bytes: of all files, photos or not.
[[nodiscard]] QString foundText(const QString &source, int photos, int bytes);

/// The name that is offered for the new folder.
[[nodiscard]] QString defaultFolderName(QDate date);
[[nodiscard]] QString copiedText(const QString &folder, int files);
/// The same after a run with failures.
[[nodiscard]] QString partlyCopiedText(const QString &folder, int files);

/// What the user calls the card that path is on, or the photo store.
[[nodiscard]] QString sourceName(const QString &path);

} // namespace lumi
