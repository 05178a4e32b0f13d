// SPDX-License-Identifier: MIT
// Copies one file for a paste, without events in between. Unlike copyFile() it never takes a read
// error for the end of the file, since a paste may remove the source afterwards.
#pragma once

#include "files/engine/PasteResult.h"

class QString;

namespace lumi {

/// Copies the contents of a regular file into a new file, which gets its name when it is whole.
/// A target that exists, even as a dangling link, is TargetNotMade. A failed copy leaves nothing.
/// @param sourceGoes the caller will remove the source: Done then also means that the copy and its
///        name are on the disk
[[nodiscard]] PasteResult rawCopy(const QString &source, const QString &target, bool sourceGoes);

} // namespace lumi
