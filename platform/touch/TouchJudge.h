// SPDX-License-Identifier: MIT
// Tells swipes and pinches of fingers from presses before a press reaches a widget. A finger that
// rests, or whose gesture no widget accepts, becomes press, moves and release of the left mouse
// button, with the touch screen as their device. Mouse and pen are not touch events and pass
// unchanged.
#pragma once

#include <QElapsedTimer>
#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QTimer>
#include <Qt>

class QPointingDevice;
class QTouchEvent;
class QWindow;

namespace lumi {

class TouchJudge : public QObject
{
    Q_OBJECT

public:
    /// A finger that has not moved for this long presses.
    static constexpr int kRestMs = 150;
    /// A finger that has moved less than kSwipeLength in this time presses.
    static constexpr int kSwipeMs = 500;
    /// The least movement of a swipe, in logical pixels.
    static constexpr int kSwipeLength = 40;
    /// A pinch makes a step whenever the distance of the fingers has changed by this factor.
    static constexpr double kPinchStep = 1.25;

    /// Judges all touch events of the application, which becomes the parent.
    explicit TouchJudge(QObject *application);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class State { Idle, Undecided, Pressed, Pinching, Done };

    void begin(QWindow *window, const QTouchEvent &event);
    void update(const QTouchEvent &event);
    void end();
    void cancel();
    void followFinger(const QTouchEvent &event);
    void moveTo(QPointF position);
    void decide();
    void press();
    void startPinch(const QTouchEvent &event);
    void pinch(const QTouchEvent &event);
    void sendMouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons) const;
    [[nodiscard]] bool offer(QEvent *gesture, QPointF position) const;

    QPointer<QWindow> m_window;
    const QPointingDevice *m_device = nullptr; ///< the touch screen
    State m_state = State::Idle;
    int m_finger = 0; ///< the first one of this touch
    QPointF m_start;  ///< all positions are global
    QPointF m_position;
    double m_span = 0; ///< distance of the fingers at the last step of the pinch
    QElapsedTimer m_sinceStart;
    QTimer m_rest;
    QElapsedTimer m_sincePress; ///< for double clicks
    QPointF m_pressed;
};

} // namespace lumi
