// SPDX-License-Identifier: MIT
#include "platform/windows/PointerHider.h"

#include <QMouseEvent>
#include <QWidget>

lumi::PointerHider::PointerHider(QWidget *widget)
    : QObject(widget)
{
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
    m_delay.setSingleShot(true);
    m_delay.setInterval(kDelayMs);
    connect(&m_delay, &QTimer::timeout, widget, [widget] {
        widget->setCursor(Qt::BlankCursor);
    });
    m_delay.start();
}

bool lumi::PointerHider::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::MouseMove) {
        return QObject::eventFilter(watched, event);
    }
    static_cast<QWidget *>(watched)->unsetCursor();
    m_delay.start();
    return static_cast<QMouseEvent *>(event)->buttons() == Qt::NoButton;
}
