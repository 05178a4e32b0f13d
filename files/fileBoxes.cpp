// SPDX-License-Identifier: MIT
#include "files/fileBoxes.h"

#include "app/common/messages.h"
#include "widgets/MyDialogWait.h"

#include <QMessageBox>

namespace {

struct BoxKind
{
    QMessageBox::Icon icon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton fallback; ///< default and escape
};

/// The button that ended it.
int runBox(const BoxKind &kind, QWidget *parent, const QString &caption, const QString &text)
{
    // On the heap: the parent may go while the box is up.
    const QPointer<QMessageBox> box(
        new QMessageBox(kind.icon, caption, QString(), kind.buttons, parent));
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setDefaultButton(kind.fallback);
    box->setEscapeButton(kind.fallback);
    const int answer = box->exec();
    delete box;
    return answer;
}

} // namespace

void lumi::showError(QWidget *parent, const QString &text)
{
    const BoxKind kind{QMessageBox::Critical, QMessageBox::Ok, QMessageBox::Ok};
    runBox(kind, parent, msg(MsgError), text);
}

void lumi::showInformation(QWidget *parent, const QString &caption, const QString &text)
{
    const BoxKind kind{QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok};
    runBox(kind, parent, caption, text);
}

bool lumi::confirms(QWidget *parent, const QString &caption, const QString &question)
{
    const BoxKind kind{QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No, QMessageBox::No};
    return runBox(kind, parent, caption, question) == QMessageBox::Yes;
}

lumi::WaitBox::WaitBox(QWidget *parent)
    : m_dialog(new MyDialogWait(parent, msg(MsgWorking)))
{
    m_dialog->start(0);
}

lumi::WaitBox::~WaitBox()
{
    delete m_dialog;
}
