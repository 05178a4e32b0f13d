// SPDX-License-Identifier: MIT
#include "platform/windows/QPEMenuBar.h"

#include "platform/windows/QPEToolBar.h"

#include <QLayout>

QPEMenuBar::QPEMenuBar(QPEToolBar *toolBar, const char *name)
    : QMenuBar(toolBar->host())
{
    setObjectName(QString::fromLatin1(name));
    setNativeMenuBar(false);
    toolBar->host()->layout()->addWidget(this);
}
