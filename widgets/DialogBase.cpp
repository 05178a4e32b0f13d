// SPDX-License-Identifier: MIT
#include "widgets/DialogBase.h"

DialogBase::DialogBase(QWidget *parent, const char *name)
    : QMessageBox(parent)
{
    setObjectName(QString::fromUtf8(name));
}
