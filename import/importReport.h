// SPDX-License-Identifier: MIT
// The report of files that could not be imported: rich text, one block a file.
#pragma once

#include "import/ImportKind.h"

#include <QString>

namespace lumi {

/// What the report calls a failure; empty for ImportKind::Done.
[[nodiscard]] QString failureWord(ImportKind kind);

/// Puts a block for this file at the report's end. path: only its last part is shown.
void appendErrorBlock(QString *report, const QString &path, ImportKind kind);

} // namespace lumi
