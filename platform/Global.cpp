// SPDX-License-Identifier: MIT
#include "platform/Global.h"

#include <QGuiApplication>
#include <QInputMethod>

void Global::hideInputMethod()
{
    // Qt 6.4 on Wayland crashes here while the compositor has no seat. Then no window has the
    // focus either, and without it nobody has called up a keyboard.
    if (QGuiApplication::focusWindow() != nullptr
        || !QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        QGuiApplication::inputMethod()->hide();
    }
}
