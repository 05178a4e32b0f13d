// SPDX-License-Identifier: MIT
#include "widgets/MyDialogProgressBar.h"

#include "app/common/messages.h"
#include "platform/QPEApplication.h"
#include "widgets/dialogFrame.h"

#include <QFrame>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kBoxMargin = 8;
constexpr int kBarWidth = 400;
constexpr int kPaintTimeMs = 100;

QProgressBar *addBar(QVBoxLayout *box)
{
    auto *frame = new QFrame(box->parentWidget());
    frame->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Raised));
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *bar = new QProgressBar(frame);
    bar->setAlignment(Qt::AlignCenter);
    bar->setMinimumWidth(kBarWidth);
    layout->addWidget(bar);
    box->addWidget(frame);
    return bar;
}

} // namespace

MyDialogProgressBar::MyDialogProgressBar(QWidget *parent, const QString &text,
                                         const QString &secondText)
    : QDialog(parent)
{
    setModal(true);
    QVBoxLayout *box = lumi::makeFramedBox(this, kBoxMargin);
    lumi::addCentredText(box, text);
    m_bar = addBar(box);
    if (!secondText.isNull()) {
        lumi::addCentredText(box, secondText);
    }
    QPushButton *cancel = lumi::addNarrowButton(box, msg(lumi::MsgCancel));
    connect(cancel, &QPushButton::clicked, this, &MyDialogProgressBar::reject);
}

MyDialogProgressBar::~MyDialogProgressBar()
{
    hide();
}

void MyDialogProgressBar::start(int total)
{
    m_bar->setRange(0, qMax(1, total)); // 0 to 0 would be a bar that never ends
    show();
    QPEApplication::waitPainted(this, kPaintTimeMs);
}

void MyDialogProgressBar::progress(int n)
{
    m_bar->setValue(n);
}

void MyDialogProgressBar::reject()
{
    Q_EMIT btn_cancel_clicked();
    QDialog::reject();
}
