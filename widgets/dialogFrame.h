// SPDX-License-Identifier: MIT
// The common look of the dialogs: a raised double frame round their contents.
#pragma once

class QDialog;
class QPushButton;
class QString;
class QVBoxLayout;

namespace lumi {

/// Puts a framed box into the dialog and returns the box's layout, with a spacing of 4.
/// @param margin between the frame and what it holds
QVBoxLayout *makeFramedBox(QDialog *dialog, int margin);

/// A centred line of plain text at the end of a framed box.
void addCentredText(QVBoxLayout *box, const QString &text);

/// A button at the end of a framed box, hardly wider than its text.
QPushButton *addNarrowButton(QVBoxLayout *box, const QString &text);

} // namespace lumi
