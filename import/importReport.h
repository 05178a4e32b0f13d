// SPDX-License-Identifier: MIT
// The report of files that could not be imported: rich text, one block a file.
#pragma once

#include "import/ImportKind.h"

#include <QString>

namespace lumi {

/// What the report calls a failure; empty for ImportKind::Done.
[[nodiscard]] QString failureWord(ImportKind kind);

/// The report with a block for this file at its end. path: only its last part is shown.
[[nodiscard]] QString withErrorBlock(const QString &report, const QString &path, ImportKind kind);

} // namespace lumi
