// SPDX-License-Identifier: MIT
#include "platform/Global.h"

#include "platform/session/windowSystem.h"

#include <QGuiApplication>
#include <QInputMethod>

void Global::hideInputMethod()
{
    // Qt 6.4 on Wayland crashes here while the compositor has no seat. In that case no window has
    // the focus, and there is no keyboard to hide.
    if (QGuiApplication::focusWindow() != nullptr || !lumi::isWayland()) {
        QGuiApplication::inputMethod()->hide();
    }
}
