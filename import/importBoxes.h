// SPDX-License-Identifier: MIT
// The boxes of the import. All texts are plain: names of folders come from the user.
#pragma once

#include <QMessageBox>

namespace lumi {

/// A message with one button.
void tellBox(QWidget *parent, QMessageBox::Icon icon, const QString &caption, const QString &text);

/// A question without an icon: true for Yes, the default; Escape and closing count as No.
[[nodiscard]] bool askYesNo(QWidget *parent, const QString &caption, const QString &text);

/// Shows rich text until the user closes it. No resources are loaded and no links followed.
void showReport(QWidget *parent, const QString &caption, const QString &richText);

} // namespace lumi
