// SPDX-License-Identifier: MIT
// A question with two answers and no icon.
#pragma once

class QString;
class QWidget;

/// Shows the text as plain text and waits. Returns the index of the button, 0 (the default)
/// or 1; Escape and closing the box count as 1.
[[nodiscard]] int askBox(QWidget *parent, const QString &caption, const QString &text,
                         const QString &button0, const QString &button1);
