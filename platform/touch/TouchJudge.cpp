// SPDX-License-Identifier: MIT
#include "platform/touch/TouchJudge.h"

#include "platform/touch/gestures.h"

#include <QApplication>
#include <QLineF>
#include <QMouseEvent>
#include <QStyleHints>
#include <QTouchEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace {

double distanceOf(const QTouchEvent &event)
{
    const auto &points = event.points();
    return QLineF(points[0].globalPosition(), points[1].globalPosition()).length();
}

lumi::SwipeEvent::Direction directionOf(QPointF way)
{
    using lumi::SwipeEvent;
    if (std::abs(way.x()) >= std::abs(way.y())) {
        return way.x() < 0 ? SwipeEvent::Left : SwipeEvent::Right;
    }
    return way.y() < 0 ? SwipeEvent::Up : SwipeEvent::Down;
}

double lengthOf(QPointF way)
{
    return std::max(std::abs(way.x()), std::abs(way.y()));
}

} // namespace

lumi::TouchJudge::TouchJudge(QObject *application)
    : QObject(application)
{
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &TouchJudge::decide);
    application->installEventFilter(this);
}

bool lumi::TouchJudge::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWindowType()) {
        return false;
    }
    switch (event->type()) {
    case QEvent::TouchBegin:
        begin(static_cast<QWindow *>(watched), *static_cast<QTouchEvent *>(event));
        break;
    case QEvent::TouchUpdate:
        update(*static_cast<QTouchEvent *>(event));
        break;
    case QEvent::TouchEnd:
        end();
        break;
    case QEvent::TouchCancel:
        cancel();
        break;
    default:
        return false;
    }
    // An accepted touch event makes no mouse events of its own.
    event->accept();
    return true;
}

void lumi::TouchJudge::begin(QWindow *window, const QTouchEvent &event)
{
    m_window = window;
    m_device = event.pointingDevice();
    m_finger = event.points().first().id();
    m_start = event.points().first().globalPosition();
    m_position = m_start;
    m_sinceStart.start();
    m_state = State::Undecided;
    if (event.points().size() > 1) {
        startPinch(event);
    } else {
        m_rest.start(kRestMs);
    }
}

void lumi::TouchJudge::update(const QTouchEvent &event)
{
    if (m_state == State::Undecided && event.points().size() > 1) {
        startPinch(event);
    } else if (m_state == State::Pinching && event.points().size() > 1) {
        pinch(event);
    } else {
        followFinger(event);
    }
}

void lumi::TouchJudge::followFinger(const QTouchEvent &event)
{
    for (const QEventPoint &point : event.points()) {
        if (point.id() == m_finger) {
            moveTo(point.globalPosition());
        }
    }
}

void lumi::TouchJudge::moveTo(QPointF position)
{
    m_position = position;
    if (m_state == State::Pressed) {
        sendMouse(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    } else if (m_state == State::Undecided && lengthOf(m_position - m_start) > kSwipeLength) {
        m_rest.stop();
        SwipeEvent swipe(directionOf(m_position - m_start));
        m_state = State::Done;
        if (!offer(&swipe, m_start)) {
            press();
        }
    }
}

/// Called when the finger has been down for kRestMs. A finger that is moving may still swipe.
void lumi::TouchJudge::decide()
{
    const auto left = kSwipeMs - m_sinceStart.elapsed();
    const bool isMoving
        = lengthOf(m_position - m_start) >= QGuiApplication::styleHints()->startDragDistance();
    if (isMoving && left > 0) {
        m_rest.start(static_cast<int>(left));
    } else {
        press();
    }
}

/// Sends the press at the place where the finger went down, then a move to its present place.
void lumi::TouchJudge::press()
{
    const QStyleHints *hints = QGuiApplication::styleHints();
    const bool isDouble = m_sincePress.isValid()
        && m_sincePress.elapsed() < hints->mouseDoubleClickInterval()
        && lengthOf(m_start - m_pressed) <= hints->touchDoubleTapDistance();
    const QPointF now = m_position;
    m_state = State::Pressed;
    m_position = m_start;
    m_pressed = m_start;
    if (isDouble) {
        m_sincePress.invalidate();
    } else {
        m_sincePress.start();
    }
    sendMouse(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    // The press may have run an event loop in which the finger was lifted.
    if (isDouble && m_state == State::Pressed) {
        sendMouse(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
    }
    if (m_state == State::Pressed && now != m_start) {
        moveTo(now);
    }
}

void lumi::TouchJudge::end()
{
    m_rest.stop();
    if (m_state == State::Undecided) {
        press();
    }
    if (m_state == State::Pressed) {
        m_state = State::Idle;
        sendMouse(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    }
    m_state = State::Idle;
}

/// The release of a cancelled press comes outside of every widget, so that it clicks nothing.
void lumi::TouchJudge::cancel()
{
    m_rest.stop();
    if (m_state == State::Pressed) {
        constexpr int kOutside = -10000;
        m_position = QPointF(kOutside, kOutside);
        sendMouse(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
        sendMouse(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    }
    m_state = State::Idle;
}

void lumi::TouchJudge::startPinch(const QTouchEvent &event)
{
    m_rest.stop();
    m_state = State::Pinching;
    m_span = distanceOf(event);
}

void lumi::TouchJudge::pinch(const QTouchEvent &event)
{
    const double span = distanceOf(event);
    const bool isApart = span >= m_span * kPinchStep;
    if (!isApart && span * kPinchStep > m_span) {
        return;
    }
    m_span = span;
    const auto &points = event.points();
    const QPointF centre = (points[0].globalPosition() + points[1].globalPosition()) / 2;
    PinchEvent gesture(isApart, centre.toPoint());
    // Two fingers never press, whether or not a widget accepts the pinch.
    static_cast<void>(offer(&gesture, centre));
}

void lumi::TouchJudge::sendMouse(QEvent::Type type, Qt::MouseButton button,
                                 Qt::MouseButtons buttons) const
{
    if (m_window) {
        const QPointF inWindow = m_window->mapFromGlobal(m_position);
        QMouseEvent event(type, inWindow, inWindow, m_position, button, buttons,
                          QGuiApplication::keyboardModifiers(), m_device);
        QCoreApplication::sendEvent(m_window, &event);
    }
}

bool lumi::TouchJudge::offer(QEvent *gesture, QPointF position) const
{
    QPointer<QWidget> widget = QApplication::widgetAt(position.toPoint());
    while (widget && QApplication::activePopupWidget() == nullptr && !gesture->isAccepted()) {
        QCoreApplication::sendEvent(widget, gesture);
        widget = widget && !widget->isWindow() ? widget->parentWidget() : nullptr;
    }
    return gesture->isAccepted();
}
