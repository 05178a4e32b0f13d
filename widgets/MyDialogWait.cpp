// SPDX-License-Identifier: MIT
#include "widgets/MyDialogWait.h"

#include "platform/QPEApplication.h"
#include "widgets/dialogFrame.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int kBoxMargin = 4;
constexpr int kPaintTimeMs = 100;

} // namespace

MyDialogWait::MyDialogWait(QWidget *parent, const QString &text, const QString &buttonText)
    : QDialog(parent)
{
    setModal(true);
    QVBoxLayout *box = lumi::makeFramedBox(this, kBoxMargin);
    lumi::addCentredText(box, text);
    if (!buttonText.isNull()) {
        QPushButton *button = lumi::addNarrowButton(box, buttonText);
        connect(button, &QPushButton::clicked, this, &MyDialogWait::btn_clicked);
    }
}

MyDialogWait::~MyDialogWait()
{
    hide();
}

void MyDialogWait::start(int ms)
{
    if (ms > 0) {
        QTimer::singleShot(ms, this, &QDialog::accept);
    }
    show();
    QPEApplication::waitPainted(this, kPaintTimeMs);
}

void MyDialogWait::slot_timeout()
{
    hide();
}

void MyDialogWait::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        return;
    }
    QDialog::keyPressEvent(event);
}

void MyDialogWait::closeEvent(QCloseEvent *event)
{
    event->ignore();
}
