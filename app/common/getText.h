// SPDX-License-Identifier: MIT
// A modal dialog that asks for one line of text. It has the platform's row with OK and Cancel below
// the line.
#pragma once

class QString;
class QWidget;

/// @param maxLength in characters; no limit if 0 or less
/// Returns the line (empty, not null, if nothing was typed). Returns a null string on cancel, and
/// without opening the dialog if the program is asked to end.
[[nodiscard]] QString getText(QWidget *parent, const QString &caption, const QString &label,
                              const QString &initial, int maxLength);
