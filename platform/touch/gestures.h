// SPDX-License-Identifier: MIT
// What fingers do besides pressing. TouchJudge sends these events to the widget under the finger,
// then to its parents up to the window, until one accepts. They arrive ignored.
#pragma once

#include <QEvent>
#include <QPoint>

namespace lumi {

/// One finger was moved quickly.
class SwipeEvent : public QEvent
{
public:
    static constexpr QEvent::Type kType = QEvent::Type(1001);

    enum Direction { Left, Right, Up, Down };

    explicit SwipeEvent(Direction direction)
        : QEvent(kType)
        , m_direction(direction)
    {
        ignore();
    }

    /// Where the finger went.
    [[nodiscard]] Direction direction() const { return m_direction; }

    /// A finger that pushes the present page away, to the left or up, asks for the next one.
    [[nodiscard]] bool isToNext() const { return m_direction == Left || m_direction == Up; }

private:
    Direction m_direction;
};

/// Two fingers were moved apart or together by one step.
class PinchEvent : public QEvent
{
public:
    static constexpr QEvent::Type kType = QEvent::Type(1002);

    PinchEvent(bool isApart, QPoint globalCentre)
        : QEvent(kType)
        , m_isApart(isApart)
        , m_globalCentre(globalCentre)
    {
        ignore();
    }

    [[nodiscard]] bool isApart() const { return m_isApart; }

    /// The point between the fingers.
    [[nodiscard]] QPoint globalCentre() const { return m_globalCentre; }

private:
    bool m_isApart;
    QPoint m_globalCentre;
};

} // namespace lumi
