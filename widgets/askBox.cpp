// SPDX-License-Identifier: MIT
#include "widgets/askBox.h"

#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

int askBox(QWidget *parent, const QString &caption, const QString &text, const QString &button0,
           const QString &button1)
{
    // On the heap: the parent may go while the box is up.
    const QPointer<QMessageBox> box(new QMessageBox(parent));
    box->setIcon(QMessageBox::NoIcon);
    box->setWindowTitle(caption);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    QPushButton *first = box->addButton(button0, QMessageBox::AcceptRole);
    QPushButton *second = box->addButton(button1, QMessageBox::RejectRole);
    box->setDefaultButton(first);
    box->setEscapeButton(second);
    box->exec();
    const int answer = box && box->clickedButton() == first ? 0 : 1;
    delete box;
    return answer;
}
