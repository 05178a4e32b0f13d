// SPDX-License-Identifier: MIT
// Answers of a user to a dialog.
#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QString>

#include <functional>

namespace lumi::test {

using DialogAnswer = std::function<void(QDialog *)>;

/// Replaces the offered text by typing and accepts it with Return.
[[nodiscard]] DialogAnswer typing(const QString &text);
[[nodiscard]] DialogAnswer pressing(Qt::Key key);
[[nodiscard]] DialogAnswer clicking(QMessageBox::StandardButton button);
/// Closes the dialog as a window manager does.
[[nodiscard]] DialogAnswer closing();
/// Calls a function before the answer.
[[nodiscard]] DialogAnswer after(std::function<void()> deed, DialogAnswer answer);

/// Whether a wait dialog is on the screen.
[[nodiscard]] bool isWaitSeen();

/// One line: "input New Folder: Enter the folder name: ''",
/// "warning Delete: a.jpg will be deleted. Are you sure? Yes/No*" (* is default and escape),
/// "critical Error: Deletion failed. OK*", "wait Working...".
/// "over wait" is added when a wait dialog is still seen below.
[[nodiscard]] QString describe(const QDialog *dialog);

} // namespace lumi::test
