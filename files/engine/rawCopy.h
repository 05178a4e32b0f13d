// SPDX-License-Identifier: MIT
// Copies one file for a paste, without running events. Unlike copyFile() it reports read errors,
// because a paste may remove the source afterwards.
#pragma once

#include "files/engine/PasteResult.h"

class QString;

namespace lumi {

/// Copies the contents of a regular file into a new file, which gets its name when it is complete.
/// TargetNotMade if the target exists, even as a broken link. A failed copy leaves nothing.
/// @param sourceGoes the caller will remove the source: Done then also means that the copy and its
///        name are on the disk
[[nodiscard]] PasteResult rawCopy(const QString &source, const QString &target, bool sourceGoes);

} // namespace lumi
