// SPDX-License-Identifier: MIT
// Answers dialogs instead of the user: records every dialog that appears and answers it from the
// dialog's event loop. Answers are given by name or in order. The default is the default button.
#pragma once

#include "tests/support/dialogAnswers.h"

#include <QDialog>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>

namespace lumi::test {

/// A dialog as it was when it appeared.
struct SeenDialog
{
    QString className;
    QString caption;
    QString text;
    QStringList buttons; ///< captions without their underlined letters
    int icon = 0;        ///< of a message box
    QString line;        ///< the text of describe()
    QPointer<QWidget> parent;
};

class DialogDriver : public QObject
{
public:
    using Answer = DialogAnswer;

    DialogDriver();

    /// Answers the next dialog with this caption, or with this class name for wait and progress
    /// dialogs. All other dialogs are accepted by their default button or by accept().
    void expect(const QString &captionOrClass, Answer answer);
    /// From now on dialogs without an answer of their own are answered in this order. Without
    /// further answers they are closed. Wait and progress dialogs are left alone.
    void answerInOrder(QList<Answer> answers);
    /// Answers the dialog by pressing the button with that caption.
    void press(const QString &captionOrClass, const QString &button);

    [[nodiscard]] QStringList captions() const; ///< of all but wait and progress dialogs
    [[nodiscard]] QStringList texts() const;    ///< of the same
    [[nodiscard]] QStringList lines() const;    ///< of all dialogs
    /// Dialogs of a class, in the order they appeared.
    [[nodiscard]] QList<SeenDialog> ofClass(const QString &className) const;

    /// The number of answers for which no dialog appeared.
    [[nodiscard]] int unused() const { return static_cast<int>(m_answers.size()); }

    QList<SeenDialog> seen;
    /// Called as each dialog appears.
    std::function<void()> atShow;

    /// Presses the button with that caption. False if no such button can be pressed.
    static bool pressButton(QDialog *dialog, const QString &button);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Row
    {
        QString key;
        Answer answer;
    };

    void appeared(QDialog *dialog);
    [[nodiscard]] static SeenDialog recordOf(const QDialog *dialog);
    /// Null for a dialog that is not answered.
    [[nodiscard]] Answer answerTo(const SeenDialog &dialog);

    QList<Row> m_answers;
    QList<Answer> m_inOrder;
    bool m_isInOrder = false;
    QList<QPointer<QDialog>> m_open;
};

} // namespace lumi::test
