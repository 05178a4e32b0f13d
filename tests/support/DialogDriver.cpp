// SPDX-License-Identifier: MIT
#include "tests/support/DialogDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

QString plain(QString caption)
{
    return caption.remove(QLatin1Char('&'));
}

bool isWorkDialog(const QString &className)
{
    return className.startsWith(QLatin1String("MyDialog"));
}

void answerUsually(QDialog *dialog)
{
    auto *box = qobject_cast<QMessageBox *>(dialog);
    if (box == nullptr) {
        dialog->accept();
    } else if (box->defaultButton() != nullptr) {
        box->defaultButton()->click();
    } else {
        box->buttons().constFirst()->click();
    }
}

} // namespace

lumi::test::DialogDriver::DialogDriver()
{
    qApp->installEventFilter(this);
}

void lumi::test::DialogDriver::expect(const QString &captionOrClass, Answer answer)
{
    m_answers.append({captionOrClass, std::move(answer)});
}

void lumi::test::DialogDriver::answerInOrder(QList<Answer> answers)
{
    m_inOrder = std::move(answers);
    m_isInOrder = true;
}

void lumi::test::DialogDriver::press(const QString &captionOrClass, const QString &button)
{
    expect(captionOrClass, [button](QDialog *dialog) {
        if (!pressButton(dialog, button)) {
            qFatal("no button %s", qPrintable(button));
        }
    });
}

QStringList lumi::test::DialogDriver::captions() const
{
    QStringList result;
    for (const SeenDialog &dialog : seen) {
        if (!isWorkDialog(dialog.className)) {
            result.append(dialog.caption);
        }
    }
    return result;
}

QStringList lumi::test::DialogDriver::texts() const
{
    QStringList result;
    for (const SeenDialog &dialog : seen) {
        if (!isWorkDialog(dialog.className)) {
            result.append(dialog.text);
        }
    }
    return result;
}

QStringList lumi::test::DialogDriver::lines() const
{
    QStringList result;
    for (const SeenDialog &dialog : seen) {
        result.append(dialog.line);
    }
    return result;
}

QList<lumi::test::SeenDialog> lumi::test::DialogDriver::ofClass(const QString &className) const
{
    QList<SeenDialog> result;
    std::copy_if(seen.begin(), seen.end(), std::back_inserter(result),
                 [&className](const SeenDialog &dialog) {
                     return dialog.className == className;
                 });
    return result;
}

bool lumi::test::DialogDriver::pressButton(QDialog *dialog, const QString &button)
{
    const auto buttons = dialog->findChildren<QAbstractButton *>();
    for (QAbstractButton *candidate : buttons) {
        if (plain(candidate->text()) == button && candidate->isEnabled()) {
            candidate->click();
            return true;
        }
    }
    return false;
}

bool lumi::test::DialogDriver::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = qobject_cast<QDialog *>(watched);
    if (event->type() == QEvent::Show && dialog != nullptr && !m_open.contains(dialog)) {
        appeared(dialog);
    } else if (event->type() == QEvent::Hide && dialog != nullptr) {
        m_open.removeAll(dialog);
    }
    return QObject::eventFilter(watched, event);
}

void lumi::test::DialogDriver::appeared(QDialog *dialog)
{
    m_open.append(dialog);
    if (atShow) {
        atShow();
    }
    seen.append(recordOf(dialog));
    const Answer answer = answerTo(seen.constLast());
    if (answer) {
        QTimer::singleShot(0, dialog, [dialog, answer] {
            answer(dialog);
        });
    }
}

lumi::test::SeenDialog lumi::test::DialogDriver::recordOf(const QDialog *dialog)
{
    SeenDialog record;
    record.className = QString::fromLatin1(dialog->metaObject()->className());
    record.caption = dialog->windowTitle();
    record.line = describe(dialog);
    record.parent = dialog->parentWidget();
    if (const auto *box = qobject_cast<const QMessageBox *>(dialog)) {
        record.text = box->text();
        record.icon = box->icon();
    } else if (const auto *label = dialog->findChild<QLabel *>()) {
        record.text = label->text();
    }
    const auto buttons = dialog->findChildren<QAbstractButton *>();
    for (const QAbstractButton *button : buttons) {
        record.buttons.append(plain(button->text()));
    }
    return record;
}

lumi::test::DialogAnswer lumi::test::DialogDriver::answerTo(const SeenDialog &dialog)
{
    const bool isWork = isWorkDialog(dialog.className);
    const QString key = isWork ? dialog.className : dialog.caption;
    const auto found = std::find_if(m_answers.begin(), m_answers.end(), [&key](const Row &row) {
        return row.key == key;
    });
    if (found != m_answers.end()) {
        Answer answer = found->answer;
        m_answers.erase(found);
        return answer;
    }
    if (isWork) {
        return {};
    }
    if (m_isInOrder) {
        return m_inOrder.isEmpty() ? closing() : m_inOrder.takeFirst();
    }
    return answerUsually;
}
