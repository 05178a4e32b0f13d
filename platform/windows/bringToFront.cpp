// SPDX-License-Identifier: MIT
#include "platform/windows/bringToFront.h"

#include <QApplication>
#include <QByteArray>
#include <QWidget>

void lumi::bringToFront(QWidget *window, const QByteArray &token)
{
    constexpr auto *kVariable = "XDG_ACTIVATION_TOKEN";
    // Qt's Wayland plugin takes the token from here when it activates a window.
    if (!token.isEmpty()) {
        qputenv(kVariable, token);
    }
    QWidget *dialog = QApplication::activeModalWidget();
    QWidget *front = dialog != nullptr ? dialog : window;
    for (QWidget *widget : {window, front}) {
        widget->setWindowState(widget->windowState() & ~Qt::WindowMinimized);
        widget->raise();
    }
    front->activateWindow();
    qunsetenv(kVariable);
}
