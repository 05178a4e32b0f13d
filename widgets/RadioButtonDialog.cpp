// SPDX-License-Identifier: MIT
#include "widgets/RadioButtonDialog.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int kDialogMargin = 10;
constexpr int kDialogSpacing = 7;
constexpr int kGroupMargin = 4;
constexpr int kRejected = -1;

} // namespace

RadioButtonDialog::RadioButtonDialog(QWidget *parent, const QString &caption, const QString &text,
                                     const QStringList &choices, int defaultIndex)
    : QDialog(parent)
    , m_index(defaultIndex)
{
    setModal(true);
    setWindowTitle(caption);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
    layout->setSpacing(kDialogSpacing);
    auto *label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    layout->addWidget(label);
    auto *frame = new QGroupBox(this);
    layout->addWidget(frame);
    auto *rows = new QVBoxLayout(frame);
    rows->setContentsMargins(kGroupMargin, kGroupMargin, kGroupMargin, kGroupMargin);
    rows->setSpacing(kGroupMargin);
    auto *group = new QButtonGroup(this);
    for (int i = 0; i < choices.size(); ++i) {
        auto *button = new QRadioButton(choices.at(i), frame);
        button->setChecked(i == defaultIndex);
        group->addButton(button, i);
        rows->addWidget(button);
    }
    connect(group, &QButtonGroup::idClicked, this, &RadioButtonDialog::btn_clicked);
}

int RadioButtonDialog::exec()
{
    return QDialog::exec() == QDialog::Accepted ? m_index : kRejected;
}

void RadioButtonDialog::btn_clicked(int index)
{
    m_index = index;
}

void RadioButtonDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        accept();
    } else {
        QDialog::keyPressEvent(event);
    }
}
