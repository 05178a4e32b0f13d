// SPDX-License-Identifier: MIT
#include "widgets/commonActions.h"

#include "app/common/messages.h"
#include "platform/windows/QPEDecoration.h"
#include "widgets/HkAboutDialog.h"

void showHelp(QWidget *window)
{
    QPEDecoration().help(window);
}

void showVersion(QWidget *window)
{
    const QString buildInfo
        = QStringLiteral("%1 %2").arg(QStringLiteral("Jan 31 2005"), QStringLiteral("12:42:36"));
    HkAboutDialog dialog(msg(lumi::MsgLumiVault), QStringLiteral("Ver " LUMI_VERSION),
                         QString::fromUtf8("Copyright \xC2\xA9 Lumi Vault contributors"), buildInfo,
                         window);
    dialog.exec();
}
