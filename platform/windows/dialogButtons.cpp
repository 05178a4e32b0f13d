// SPDX-License-Identifier: MIT
#include "platform/windows/dialogButtons.h"

#include <QDialog>
#include <QDialogButtonBox>

namespace {

QDialogButtonBox *makeRow(QDialog *dialog, QDialogButtonBox::StandardButtons buttons)
{
    auto *row = new QDialogButtonBox(buttons, dialog);
    QObject::connect(row, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(row, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return row;
}

} // namespace

QDialogButtonBox *lumi::makeAcceptRow(QDialog *dialog)
{
    return makeRow(dialog, QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

QDialogButtonBox *lumi::makeCloseRow(QDialog *dialog)
{
    return makeRow(dialog, QDialogButtonBox::Close);
}
