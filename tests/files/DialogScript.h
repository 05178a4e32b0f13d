// SPDX-License-Identifier: MIT
// A user who answers dialogs: it notes every dialog that opens while it lives and gives the
// next of its answers. A dialog that it has no answer for is closed.
#pragma once

#include <QDialog>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QStringList>

#include <functional>

namespace lumi::test {

using DialogAnswer = std::function<void(QDialog *)>;

/// Types over what is offered, and accepts it with Return.
[[nodiscard]] DialogAnswer typing(const QString &text);
/// Return alone.
[[nodiscard]] DialogAnswer pressing(Qt::Key key);
[[nodiscard]] DialogAnswer clicking(QMessageBox::StandardButton button);
/// As the window manager does it.
[[nodiscard]] DialogAnswer closing();
/// Does something first.
[[nodiscard]] DialogAnswer after(std::function<void()> deed, DialogAnswer answer);

/// Whether a wait dialog is on the screen.
[[nodiscard]] bool isWaitSeen();

class DialogScript : public QObject
{
public:
    explicit DialogScript(QList<DialogAnswer> answers);

    /// One line for each dialog:
    /// "input New Folder: Enter the folder name: ''",
    /// "warning Delete: a.jpg will be deleted. Are you sure? Yes/No*" (* is default and escape),
    /// "critical Error: Deletion failed. OK*", "wait Working...".
    /// "over wait" is added when a wait dialog is still seen below.
    QStringList seen;
    /// Asked as each dialog opens.
    std::function<bool()> isBusy;
    bool wasIdle = false;
    /// Done once, while the next wait dialog is painted.
    std::function<void()> atWait;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void meet(QDialog *dialog);

    QList<DialogAnswer> m_answers;
};

} // namespace lumi::test
