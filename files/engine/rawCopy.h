// SPDX-License-Identifier: MIT
// The copy of one file for a paste, in one go and without events in between. It differs from
// copyFile() in that a source may go away after it, so that no error is taken for an end.
#pragma once

#include "files/engine/PasteResult.h"

class QString;

namespace lumi {

/// Copies the contents of a regular file into a new file: a target that exists, even as a
/// dangling link, is TargetNotMade. After NotWritten there is no target, unless it could not
/// be removed either.
/// @param sourceGoes the caller will remove the source: Done then also means that the sizes
///        agree and that the copy and its name have reached the disk
[[nodiscard]] PasteResult rawCopy(const QString &source, const QString &target, bool sourceGoes);

} // namespace lumi
