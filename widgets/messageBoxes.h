// SPDX-License-Identifier: MIT
// The message boxes of the forms, the viewer and the slideshow, and a wait dialog for a piece of work.
// They run nested event loops: a form calls them inside a BusyScope.
// Texts may contain file names and are shown as plain text.
#pragma once

#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "widgets/MyDialogWait.h"

#include <QMessageBox>

#include <memory>

namespace lumi {

/// How a box breaks the lines of its text.
enum class BoxLines {
    Wrapped, ///< at half the width of the screen, the default of QMessageBox
    Whole    ///< only at the line breaks of the text
};

/// A box that is not shown yet, for callers that must be able to close it.
/// @param buttons No, or else Ok, is the default button and the one for Escape
[[nodiscard]] std::unique_ptr<QMessageBox>
makeBox(QWidget *parent, QMessageBox::Icon icon, const QString &caption, const QString &text,
        QMessageBox::StandardButtons buttons = QMessageBox::Ok);

/// Shows the box and returns its answer. If the program is asked to end, the box does not open, and
/// the answer is that of Escape.
int execBox(QMessageBox *box);

/// A message with one button.
void tell(QWidget *parent, QMessageBox::Icon icon, const QString &caption, const QString &text,
          BoxLines lines = BoxLines::Wrapped);

/// A message with the caption "Error".
void tellError(QWidget *parent, const QString &text, BoxLines lines = BoxLines::Wrapped);

/// A warning that asks for Yes or No. No is the default, and what Escape and closing the box mean.
[[nodiscard]] bool confirm(QWidget *parent, const QString &caption, const QString &question);

/// Asks like confirm() whether changes may be lost. If the program is asked to end, the answer is true
/// without a box.
[[nodiscard]] bool confirmDiscard(QWidget *parent, const QString &caption, const QString &question);

/// A question without an icon. Yes is the default; Escape and closing the box mean No.
[[nodiscard]] bool ask(QWidget *parent, const QString &caption, const QString &question);

/// The same with other button texts. True for the first button.
[[nodiscard]] bool ask(QWidget *parent, const QString &caption, const QString &question,
                       const QString &yes, const QString &no);

/// Does the work while the wait dialog "Working..." is shown, and returns its result. The dialog is
/// closed on return, before a message box can be opened: if both close at the same moment, a window
/// manager may give the focus to the dialog that is closing, and then no window has it.
template <typename Work> auto underWait(QWidget *parent, Work work) -> decltype(work())
{
    MyDialogWait wait(parent, msg(MsgWorking));
    wait.start(0);
    return work();
}

} // namespace lumi
