// SPDX-License-Identifier: MIT
#include "platform/toolkit/QAccel.h"

#include <QKeySequence>
#include <QWidget>

QAccel::QAccel(int key, QWidget *parent)
    : QShortcut(QKeySequence(key), parent)
{
    setContext(Qt::WindowShortcut);
}
