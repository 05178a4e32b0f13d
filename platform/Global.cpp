// SPDX-License-Identifier: MIT
#include "platform/Global.h"

#include <QGuiApplication>
#include <QInputMethod>

void Global::hideInputMethod()
{
    QGuiApplication::inputMethod()->hide();
}
