// SPDX-License-Identifier: MIT
// Writing the samples: folders are made as needed, failures are told on standard error.
#pragma once

#include <QByteArray>
#include <QString>

namespace lumi::photos {

[[nodiscard]] bool fileExists(const QString &path);
[[nodiscard]] bool makeFolder(const QString &path);
/// Makes the folders above the file too.
[[nodiscard]] bool writeFile(const QString &path, const QByteArray &bytes);

} // namespace lumi::photos
