// SPDX-License-Identifier: MIT
// The message boxes of the browser form. Their texts may hold names of files and are shown as
// they are, never as markup.
#pragma once

class QString;
class QWidget;

namespace lumi {

/// A box with the caption "Error" and one button.
void showError(QWidget *parent, const QString &text);

/// A question with Yes and No. No is the default, and what Escape and closing the box mean.
[[nodiscard]] bool confirms(QWidget *parent, const QString &caption, const QString &question);

} // namespace lumi
