// SPDX-License-Identifier: MIT
// Shortening of texts to the room there is, and the font helper.
#pragma once

class QLabel;
class QString;
class QWidget;

/// Sets the text of the label, cut with "..." if it is wider than the label.
void elideToLabel(QLabel *label, const QString &text);

/// The text, cut with "..." if it is wider than `count` times an "X" in the widget's font.
[[nodiscard]] QString elideToChars(const QWidget *widget, const QString &text, int count);

/// Gives the widget its own font at this size; ignored for a size of 0 or less.
void setFontSize(QWidget *widget, int points);
