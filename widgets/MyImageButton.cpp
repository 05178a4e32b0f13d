// SPDX-License-Identifier: MIT
#include "widgets/MyImageButton.h"

#include "widgets/focusPainters.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <qdrawutil.h>

#include <utility>

namespace {

constexpr int kPlainFrameWidth = 3;

bool strictlyInside(const QPoint &position, const QSize &size)
{
    return position.x() > 0 && position.y() > 0 && position.x() < size.width()
        && position.y() < size.height();
}

} // namespace

MyImageButton::MyImageButton(QWidget *parent, FocusPainter focusPainter)
    : QLabel(parent)
    , m_focusPainter(focusPainter)
{
    setFocusPolicy(Qt::TabFocus);
}

void MyImageButton::setNormalPixmap(const QPixmap &pixmap)
{
    m_normal = pixmap;
    for (QPixmap *other : {&m_pressedPixmap, &m_onPixmap, &m_onPressed, &m_disabled}) {
        if (other->isNull()) {
            *other = pixmap;
        }
    }
    const QSize size = pixmap.deviceIndependentSize().toSize();
    setMaximumSize(size);
    setMinimumSize(size);
    showState();
}

void MyImageButton::setPressedPixmap(const QPixmap &pixmap)
{
    m_pressedPixmap = pixmap;
    showState();
}

void MyImageButton::setOnPixmap(const QPixmap &pixmap)
{
    m_onPixmap = pixmap;
    showState();
}

void MyImageButton::setOnPressedPixmap(const QPixmap &pixmap)
{
    m_onPressed = pixmap;
    showState();
}

void MyImageButton::setDisabledPixmap(const QPixmap &pixmap)
{
    m_disabled = pixmap;
    showState();
}

void MyImageButton::setOn(bool on)
{
    const bool wasOn = std::exchange(m_on, on);
    showState();
    if (on != wasOn) {
        lumi::tellCheckChanged(this);
    }
}

void MyImageButton::setEnabled(bool enabled)
{
    m_enabled = enabled;
    QLabel::setEnabled(enabled); // takes the keys away, which this class doesn't guard
    showState();
}

const QPixmap &MyImageButton::statePixmap() const
{
    if (!m_enabled) {
        return m_disabled;
    }
    if (m_on) {
        return m_pressed ? m_onPressed : m_onPixmap;
    }
    return m_pressed ? m_pressedPixmap : m_normal;
}

void MyImageButton::showState()
{
    setPixmap(statePixmap());
}

bool MyImageButton::hasPictures() const
{
    return !m_normal.isNull() && !m_pressedPixmap.isNull();
}

void MyImageButton::setPressed(bool pressed)
{
    m_pressed = pressed;
    showState();
}

void MyImageButton::addAccessibleState(QAccessible::State *state) const
{
    state->pressed = m_pressed;
    state->checkable = m_on;
    state->checked = m_on;
}

void MyImageButton::press()
{
    Q_EMIT clicked();
}

void MyImageButton::mousePressEvent(QMouseEvent *event)
{
    if (!hasPictures()) {
        event->ignore();
        return;
    }
    setPressed(true);
}

void MyImageButton::mouseMoveEvent(QMouseEvent *event)
{
    if (m_enabled && hasPictures()) {
        setPressed(strictlyInside(event->position().toPoint(), size()));
    }
}

void MyImageButton::mouseReleaseEvent(QMouseEvent * /*event*/)
{
    if (m_enabled && hasPictures() && m_pressed) {
        setPressed(false);
        Q_EMIT clicked();
    }
}

void MyImageButton::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        focusPreviousChild();
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        focusNextChild();
        break;
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) {
            setPressed(true);
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT clicked();
        break;
    default:
        event->ignore();
    }
}

void MyImageButton::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space) {
        event->ignore();
        return;
    }
    if (m_pressed && !event->isAutoRepeat()) {
        setPressed(false);
        Q_EMIT clicked();
    }
}

void MyImageButton::focusInEvent(QFocusEvent *event)
{
    QLabel::focusInEvent(event);
    update(); // a label doesn't repaint for the focus
}

void MyImageButton::focusOutEvent(QFocusEvent *event)
{
    QLabel::focusOutEvent(event);
    setPressed(false);
    update();
}

void MyImageButton::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, pixmap());
    if (!hasFocus()) {
        return;
    }
    if (m_focusPainter != nullptr) {
        painter.end(); // one painter at a time
        m_focusPainter(this);
    } else {
        qDrawPlainRect(&painter, rect(), lumi::kFocusShade, kPlainFrameWidth + 1);
        qDrawPlainRect(&painter, rect(), lumi::kFocusColor, kPlainFrameWidth);
    }
}
