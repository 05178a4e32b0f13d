// SPDX-License-Identifier: MIT
// Where the user's folders begin: the photo store and the two cards. Above these paths nobody
// walks, and they are compared as exact strings.
#pragma once

#include <QString>

namespace lumi {

/// Absolute path of the photo store, existing or not.
[[nodiscard]] QString photoStorePath();

/// Whether path is the top folder of the photo store or of a card.
[[nodiscard]] bool isFolderRoot(const QString &path);

} // namespace lumi
