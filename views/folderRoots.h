// SPDX-License-Identifier: MIT
// The top folders: the photo store and the two cards. The user cannot go above them. Paths are
// compared as exact strings.
#pragma once

#include <QString>

namespace lumi {

/// Absolute path of the photo store, existing or not.
[[nodiscard]] QString photoStorePath();

/// Whether path is the top folder of the photo store or of a card.
[[nodiscard]] bool isFolderRoot(const QString &path);

} // namespace lumi
