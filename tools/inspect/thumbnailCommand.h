// SPDX-License-Identifier: MIT
// The thumbnail command: FILE --box WxH. It asks the photo for its thumbnail as a cell of that
// size does, but no store is open, so nothing is looked up or kept there.
#pragma once

#include <QStringList>

class QTextStream;

/// Prints a JSON object. 0 also for a photo without a thumbnail, 1 if the file can't be read, 2 for
/// wrong usage. Needs a QGuiApplication.
[[nodiscard]] int thumbnailCommand(const QStringList &arguments, QTextStream &out,
                                   QTextStream &err);
