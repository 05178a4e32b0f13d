// SPDX-License-Identifier: MIT
// The message boxes of the browser form, and its wait dialog. Their texts may hold names of
// files and are shown as they are, never as markup. All of them run events: the parent may be
// gone when they return.
#pragma once

#include <QPointer>
#include <QWidget>

class MyDialogWait;
class QString;

namespace lumi {

/// A box with the caption "Error" and one button.
void showError(QWidget *parent, const QString &text);

void showInformation(QWidget *parent, const QString &caption, const QString &text);

/// A question with Yes and No. No is the default, and what Escape and closing the box mean.
[[nodiscard]] bool confirms(QWidget *parent, const QString &caption, const QString &question);

/// Shows the wait dialog, "Working...", as long as this lives.
class WaitBox
{
public:
    explicit WaitBox(QWidget *parent);
    ~WaitBox();
    Q_DISABLE_COPY_MOVE(WaitBox)

private:
    QPointer<MyDialogWait> m_dialog; // dies with the parent, if that goes first
};

/// Does the work while the wait dialog is shown and returns its result. If the parent dies as
/// the dialog comes up, the work is left out. The dialog has gone before anything else can be
/// shown: if a box and a wait dialog below it close at the same moment, a window manager may
/// give the focus to the one that is just going, and no window of the program has it then.
template <typename Work> auto underWait(QWidget *parent, Work work) -> decltype(work())
{
    const QPointer<QWidget> alive(parent);
    const WaitBox wait(parent);
    return alive ? work() : decltype(work())();
}

} // namespace lumi
