// SPDX-License-Identifier: MIT
#include "tests/support/dialogAnswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <utility>

namespace {

bool isWait(const QObject *object)
{
    return object->inherits("MyDialogWait");
}

QString buttonsOf(const QMessageBox *box)
{
    QStringList names;
    const auto buttons = box->buttons();
    for (QAbstractButton *button : buttons) {
        const bool isFallback = box->defaultButton() == button && box->escapeButton() == button;
        names.append(button->text().remove(QLatin1Char('&'))
                     + QLatin1String(isFallback ? "*" : ""));
    }
    names.sort();
    std::reverse(names.begin(), names.end());
    return names.join(QLatin1Char('/'));
}

QString describeBox(const QMessageBox *box)
{
    const QMessageBox::Icon icon = box->icon();
    QString kind = QStringLiteral("other");
    if (icon == QMessageBox::Information) {
        kind = QStringLiteral("information");
    } else if (icon == QMessageBox::Critical) {
        kind = QStringLiteral("critical");
    } else if (icon == QMessageBox::Warning) {
        kind = QStringLiteral("warning");
    }
    const QLatin1String markup(box->textFormat() == Qt::PlainText ? "" : " (markup)");
    return kind + QLatin1Char(' ') + box->windowTitle() + QLatin1String(": ") + box->text()
        + QLatin1Char(' ') + buttonsOf(box) + markup;
}

} // namespace

bool lumi::test::isWaitSeen()
{
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && isWait(window);
    });
}

lumi::test::DialogAnswer lumi::test::typing(const QString &text)
{
    return [text](QDialog *dialog) {
        auto *line = dialog->findChild<QLineEdit *>();
        line->selectAll();
        line->insert(text);
        QTest::keyClick(line, Qt::Key_Return);
    };
}

lumi::test::DialogAnswer lumi::test::pressing(Qt::Key key)
{
    return [key](QDialog *dialog) {
        QWidget *focus = dialog->focusWidget();
        QTest::keyClick(focus != nullptr ? focus : dialog, key);
    };
}

lumi::test::DialogAnswer lumi::test::clicking(QMessageBox::StandardButton button)
{
    return [button](QDialog *dialog) {
        QTest::mouseClick(qobject_cast<QMessageBox *>(dialog)->button(button), Qt::LeftButton);
    };
}

lumi::test::DialogAnswer lumi::test::closing()
{
    return [](QDialog *dialog) {
        dialog->close();
    };
}

lumi::test::DialogAnswer lumi::test::after(std::function<void()> deed, DialogAnswer answer)
{
    return [deed = std::move(deed), answer = std::move(answer)](QDialog *dialog) {
        deed();
        answer(dialog);
    };
}

QString lumi::test::describe(const QDialog *dialog)
{
    const auto *label = dialog->findChild<QLabel *>();
    const QString text = label == nullptr ? QString() : label->text();
    if (isWait(dialog)) {
        return QStringLiteral("wait ") + text;
    }
    const QLatin1String tail(isWaitSeen() ? " over wait" : "");
    if (const auto *box = qobject_cast<const QMessageBox *>(dialog)) {
        return describeBox(box) + tail;
    }
    const auto *line = dialog->findChild<QLineEdit *>();
    return QStringLiteral("input ") + dialog->windowTitle() + QLatin1String(": ") + text
        + QLatin1String(" '") + (line == nullptr ? QString() : line->text()) + QLatin1Char('\'')
        + tail;
}
