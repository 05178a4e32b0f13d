// SPDX-License-Identifier: MIT
// The report of files that could not be imported: rich text with one block per file, and its dialog.
#pragma once

#include "import/ImportKind.h"

#include <QString>

class QWidget;

namespace lumi {

/// The text for a failure in the report; empty for ImportKind::Done.
[[nodiscard]] QString failureWord(ImportKind kind);

/// Appends a block for this file. Only the last part of the path is shown.
void appendErrorBlock(QString *report, const QString &path, ImportKind kind);

/// Shows the report until the user closes it. No resources are loaded and no links followed.
void showReport(QWidget *parent, const QString &report);

} // namespace lumi
