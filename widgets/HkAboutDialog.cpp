// SPDX-License-Identifier: MIT
#include "widgets/HkAboutDialog.h"

#include "platform/QPEApplication.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int kTextLines = 4;

} // namespace

HkAboutDialog::HkAboutDialog(const QString &appNameText, const QString &versionText,
                             const QString &copyrightText, const QString &buildInfoText,
                             QWidget *parent)
    : HkAboutDialogBase(parent)
{
    setModal(true);
    setWindowTitle(QStringLiteral("Version"));
    appName->setText(appNameText);
    version->setText(versionText);
    copyright->setText(copyrightText);
    buildInfo->setText(buildInfoText);
    connect(okBtn, &QPushButton::clicked, this, &HkAboutDialog::slotDone);
    buildInfo->hide();
    const QSize desktop = QPEApplication::desktopSize();
    const int height = okBtn->sizeHint().height() + kTextLines * fontMetrics().height();
    resize(desktop.width() / 2, qMin(height, desktop.height() / 2));
    grabKeyboard();
}

void HkAboutDialog::setVisible(bool visible)
{
    if (!visible) {
        releaseKeyboard();
    }
    HkAboutDialogBase::setVisible(visible);
}

void HkAboutDialog::slotDone()
{
    accept();
}

void HkAboutDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Down) {
        HkAboutDialogBase::keyPressEvent(event);
        return;
    }
    if ((event->modifiers() & Qt::ShiftModifier) != 0) {
        buildInfo->show();
    }
}
