// SPDX-License-Identifier: MIT
// `lumivault-inspect thumbnail FILE --box WxH`: makes the thumbnail of a photo as a cell of that
// size does. The store of thumbnails is not open, so it is neither read nor written.
#pragma once

#include <QStringList>

class QTextStream;

/// Prints a JSON object. Returns 0 also for a photo without a thumbnail, 1 if the file can't be
/// read, 2 on wrong usage. Needs a QGuiApplication.
[[nodiscard]] int thumbnailCommand(const QStringList &arguments, QTextStream &out,
                                   QTextStream &err);
