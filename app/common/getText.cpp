// SPDX-License-Identifier: MIT
#include "app/common/getText.h"

#include "platform/screen/panel.h"
#include "platform/session/QuitRequest.h"
#include "platform/windows/dialogButtons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 4;
constexpr int kLineWidth = 400;

QLineEdit *addLine(QDialog *dialog, const QString &label)
{
    auto *layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    auto *text = new QLabel(dialog);
    text->setTextFormat(Qt::PlainText);
    text->setText(label);
    auto *line = new QLineEdit(dialog);
    line->setMinimumSize(kLineWidth, lumi::kFingerSize);
    text->setBuddy(line);
    layout->addWidget(text);
    layout->addWidget(line);
    QObject::connect(line, &QLineEdit::returnPressed, dialog, &QDialog::accept);
    return line;
}

} // namespace

QString getText(QWidget *parent, const QString &caption, const QString &label,
                const QString &initial, int maxLength)
{
    if (lumi::QuitRequest::isPending()) {
        return {};
    }
    QDialog dialog(parent);
    dialog.setModal(true);
    dialog.setWindowTitle(caption);
    QLineEdit *line = addLine(&dialog, label);
    if (maxLength > 0) {
        line->setMaxLength(maxLength);
    }
    if (!initial.isEmpty()) {
        line->setText(initial);
        line->selectAll();
    }
    dialog.layout()->addWidget(lumi::makeAcceptRow(&dialog));
    line->setFocus();
    return dialog.exec() == QDialog::Accepted ? line->text() : QString();
}
