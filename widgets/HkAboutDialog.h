// SPDX-License-Identifier: MIT
// The version dialog. It grabs the keyboard while it is shown. Shift and Down show the build
// information.
#pragma once

#include "widgets/HkAboutDialogBase.h"

class HkAboutDialog : public HkAboutDialogBase
{
    Q_OBJECT

public:
    HkAboutDialog(const QString &appNameText, const QString &versionText,
                  const QString &copyrightText, const QString &buildInfoText, QWidget *parent);

    void setVisible(bool visible) override;

public Q_SLOTS:
    void slotDone();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
