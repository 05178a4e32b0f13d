// SPDX-License-Identifier: MIT
// The message boxes of the browser form, and its wait dialog. Their texts may hold names of
// files and are shown as they are, never as markup. All of them run events: the parent may be
// gone when they return.
#pragma once

#include <QPointer>

class MyDialogWait;
class QString;
class QWidget;

namespace lumi {

/// A box with the caption "Error" and one button.
void showError(QWidget *parent, const QString &text);

void showInformation(QWidget *parent, const QString &caption, const QString &text);

/// A question with Yes and No. No is the default, and what Escape and closing the box mean.
[[nodiscard]] bool confirms(QWidget *parent, const QString &caption, const QString &question);

/// The wait dialog, "Working...", from the making of this to its end.
class WaitBox
{
public:
    explicit WaitBox(QWidget *parent);
    ~WaitBox();
    Q_DISABLE_COPY_MOVE(WaitBox)

    /// To be called before a message.
    void hide();

private:
    QPointer<MyDialogWait> m_dialog; // dies with the parent, if that goes first
};

} // namespace lumi
