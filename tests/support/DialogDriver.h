// SPDX-License-Identifier: MIT
// Answers dialogs in place of the user: records every dialog that appears and answers it from its
// own event loop. The answers are given by name or in order; without one the default is used.
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
    QString line;        ///< what describe() says
    QPointer<QWidget> parent;
};

class DialogDriver : public QObject
{
public:
    using Answer = DialogAnswer;

    DialogDriver();

    /// For the next dialog of this caption that has no answer yet; wait and progress dialogs
    /// go by their class names. Others are accepted by their default button, or as a whole.
    void expect(const QString &captionOrClass, Answer answer);
    /// From now on those without an answer of their own are answered in this order, and closed
    /// when there is no more, wait and progress dialogs aside.
    void answerInOrder(QList<Answer> answers);
    /// A press on the button of that caption.
    void press(const QString &captionOrClass, const QString &button);

    [[nodiscard]] QStringList captions() const; ///< of all but wait and progress dialogs
    [[nodiscard]] QStringList texts() const;    ///< of the same
    [[nodiscard]] QStringList lines() const;    ///< of all dialogs
    /// Dialogs of a class, in the order they appeared.
    [[nodiscard]] QList<SeenDialog> ofClass(const QString &className) const;

    /// Answers that found no dialog.
    [[nodiscard]] int unused() const { return static_cast<int>(m_answers.size()); }

    QList<SeenDialog> seen;
    /// Called as each dialog appears.
    std::function<void()> atShow;

    /// Presses the button of that caption; false if there is none that can be pressed.
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
    /// Null for a dialog that is left alone.
    [[nodiscard]] Answer answerTo(const SeenDialog &dialog);

    QList<Row> m_answers;
    QList<Answer> m_inOrder;
    bool m_isInOrder = false;
    QList<QPointer<QDialog>> m_open;
};

} // namespace lumi::test
