// SPDX-License-Identifier: MIT
#include "platform/windows/QPEMenuBar.h"

#include "platform/toolkit/QAccel.h"
#include "platform/windows/QPEToolBar.h"

#include <QLayout>

QPEMenuBar::QPEMenuBar(QPEToolBar *toolBar, const char *name)
    : QMenuBar(toolBar->host())
{
    setObjectName(QString::fromLatin1(name));
    setNativeMenuBar(false);
    toolBar->host()->layout()->addWidget(this);
    auto *key = new QAccel(Qt::Key_F10, this);
    connect(key, &QAccel::activated, this, &QPEMenuBar::openFirstMenu);
}

void QPEMenuBar::openFirstMenu()
{
    if (!actions().isEmpty()) {
        setActiveAction(actions().first());
    }
}
