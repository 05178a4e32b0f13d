// SPDX-License-Identifier: MIT
#include "platform/Global.h"

#include <QGuiApplication>
#include <QInputDevice>
#include <QInputMethod>

void Global::hideInputMethod()
{
    // Qt 6.4 on Wayland crashes here while the compositor has no seat. Without input devices
    // nobody has called up a keyboard.
    if (!QInputDevice::devices().isEmpty()
        || !QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        QGuiApplication::inputMethod()->hide();
    }
}
