// SPDX-License-Identifier: MIT
#include "widgets/commonActions.h"

#include "app/common/messages.h"
#include "platform/windows/QPEDecoration.h"
#include "widgets/HkAboutDialog.h"

#include <QPointer>

void showHelp(QWidget *window)
{
    QPEDecoration().help(window);
}

void showVersion(QWidget *window)
{
    const QString buildInfo
        = QStringLiteral("%1 %2").arg(QStringLiteral("Jan 31 2005"), QStringLiteral("12:42:36"));
    // On the heap: the window may go while the dialog is up.
    const QPointer<HkAboutDialog> dialog(new HkAboutDialog(
        msg(lumi::MsgLumiVault), QStringLiteral("Ver 1.0.0"),
        QString::fromUtf8("Copyright \xC2\xA9 Lumi Vault contributors"), buildInfo, window));
    dialog->exec();
    delete dialog;
}
