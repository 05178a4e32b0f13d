// SPDX-License-Identifier: MIT
#include "widgets/HkAboutDialogBase.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Small, because the dialog's height is fixed and must hold three lines and the button.
constexpr int kMargin = 4;
constexpr int kSpacing = 2;

QLabel *addLabel(QDialog *dialog, const QString &name)
{
    auto *label = new QLabel(dialog);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    dialog->layout()->addWidget(label);
    return label;
}

} // namespace

HkAboutDialogBase::HkAboutDialogBase(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Version information"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    appName = addLabel(this, QStringLiteral("appName"));
    version = addLabel(this, QStringLiteral("version"));
    copyright = addLabel(this, QStringLiteral("copyright"));
    buildInfo = addLabel(this, QStringLiteral("buildInfo"));
    okBtn = new QPushButton(QStringLiteral("  OK  "), this);
    okBtn->setObjectName(QStringLiteral("okBtn"));
    okBtn->setDefault(true);
    layout->addWidget(okBtn, 0, Qt::AlignHCenter);
}
