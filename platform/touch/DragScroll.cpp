// SPDX-License-Identifier: MIT
#include "platform/touch/DragScroll.h"

#include <QAbstractScrollArea>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>

#include <utility>

lumi::DragScroll::DragScroll(QAbstractScrollArea *area)
    : QObject(area)
    , m_area(area)
{
    area->viewport()->installEventFilter(this);
}

bool lumi::DragScroll::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        return std::exchange(m_isDragging, false);
    }
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseMove) {
        return QObject::eventFilter(watched, event);
    }
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (mouse->deviceType() != QInputDevice::DeviceType::TouchScreen) {
        return false;
    }
    const QPoint position = mouse->globalPosition().toPoint();
    if (event->type() == QEvent::MouseButtonPress) {
        m_pressed = position;
        m_position = position;
        m_isDragging = false;
        return false;
    }
    if (!mouse->buttons().testFlag(Qt::LeftButton)) {
        return false;
    }
    const int least = QGuiApplication::styleHints()->startDragDistance();
    m_isDragging = m_isDragging || (position - m_pressed).manhattanLength() >= least;
    if (m_isDragging) {
        const QPoint step = position - std::exchange(m_position, position);
        QScrollBar *across = m_area->horizontalScrollBar();
        QScrollBar *down = m_area->verticalScrollBar();
        across->setValue(across->value() - step.x());
        down->setValue(down->value() - step.y());
    }
    return true;
}
