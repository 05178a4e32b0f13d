// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace lumi {

/// A path in the user's runtime folder for the files of one home: "<folder>/lumivault-<hash>". All
/// paths that lead to the same home give the same result. Empty if there is no runtime folder.
[[nodiscard]] QString runtimePath(const QString &home);

} // namespace lumi
