// SPDX-License-Identifier: MIT
#include "widgets/dialogFrame.h"

#include "platform/screen/panel.h"

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kDialogMargin = 4;
constexpr int kSpacing = 4;
constexpr int kLineWidth = 2;
constexpr int kButtonExtraWidth = 16;

} // namespace

QVBoxLayout *lumi::makeFramedBox(QDialog *dialog, int margin)
{
    auto *outer = new QVBoxLayout(dialog);
    outer->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
    outer->setSpacing(kSpacing);
    auto *frame = new QFrame(dialog);
    frame->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Raised));
    frame->setLineWidth(kLineWidth);
    frame->setMidLineWidth(kLineWidth);
    outer->addWidget(frame);
    auto *box = new QVBoxLayout(frame);
    box->setContentsMargins(margin, margin, margin, margin);
    box->setSpacing(kSpacing);
    return box;
}

void lumi::addCentredText(QVBoxLayout *box, const QString &text)
{
    auto *label = new QLabel(box->parentWidget());
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setAlignment(Qt::AlignHCenter);
    box->addWidget(label);
}

QPushButton *lumi::addNarrowButton(QVBoxLayout *box, const QString &text)
{
    auto *button = new QPushButton(text, box->parentWidget());
    button->setMaximumWidth(button->fontMetrics().horizontalAdvance(text) + kButtonExtraWidth);
    button->setMinimumHeight(lumi::kFingerSize);
    box->addWidget(button, 0, Qt::AlignHCenter);
    return button;
}
