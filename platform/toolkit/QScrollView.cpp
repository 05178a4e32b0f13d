// SPDX-License-Identifier: MIT
#include "platform/toolkit/QScrollView.h"

#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace {

Qt::ScrollBarPolicy policy(QScrollView::ScrollBarMode mode)
{
    switch (mode) {
    case QScrollView::AlwaysOff:
        return Qt::ScrollBarAlwaysOff;
    case QScrollView::AlwaysOn:
        return Qt::ScrollBarAlwaysOn;
    default:
        return Qt::ScrollBarAsNeeded;
    }
}

void setTravel(QScrollBar *bar, Qt::ScrollBarPolicy barPolicy, int contents, int visible)
{
    const bool scrolls = barPolicy != Qt::ScrollBarAlwaysOff;
    bar->setRange(0, scrolls ? std::max(0, contents - visible) : 0);
    bar->setPageStep(visible);
}

} // namespace

QScrollView::QScrollView(QWidget *parent, const char *name)
    : QAbstractScrollArea(parent)
{
    setObjectName(QString::fromLatin1(name));
}

void QScrollView::setHScrollBarMode(ScrollBarMode mode)
{
    setHorizontalScrollBarPolicy(policy(mode));
    updateRanges();
}

void QScrollView::setVScrollBarMode(ScrollBarMode mode)
{
    setVerticalScrollBarPolicy(policy(mode));
    updateRanges();
}

void QScrollView::resizeContents(int width, int height)
{
    m_contents = QSize(width, height);
    updateRanges();
}

void QScrollView::addChild(QWidget *child, int x, int y)
{
    child->setParent(viewport());
    child->move(QPoint(x, y) - contentsOrigin());
}

int QScrollView::visibleWidth() const
{
    return viewport()->width();
}

int QScrollView::visibleHeight() const
{
    return viewport()->height();
}

void QScrollView::contentsMousePressEvent(QMouseEvent *event)
{
    event->ignore();
}

void QScrollView::contentsMouseMoveEvent(QMouseEvent *event)
{
    event->ignore();
}

void QScrollView::mousePressEvent(QMouseEvent *event)
{
    forward(event, QEvent::MouseButtonPress, &QScrollView::contentsMousePressEvent);
}

void QScrollView::mouseDoubleClickEvent(QMouseEvent *event)
{
    forward(event, QEvent::MouseButtonPress, &QScrollView::contentsMousePressEvent);
}

void QScrollView::mouseMoveEvent(QMouseEvent *event)
{
    forward(event, QEvent::MouseMove, &QScrollView::contentsMouseMoveEvent);
}

void QScrollView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateRanges();
}

void QScrollView::scrollContentsBy(int dx, int dy)
{
    viewport()->scroll(dx, dy);
}

QPoint QScrollView::contentsOrigin() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void QScrollView::forward(QMouseEvent *event, QEvent::Type type, Handler handler)
{
    QMouseEvent inContents(type, event->position() + contentsOrigin(), event->scenePosition(),
                           event->globalPosition(), event->button(), event->buttons(),
                           event->modifiers(), event->pointingDevice());
    (this->*handler)(&inContents);
    event->setAccepted(inContents.isAccepted());
}

void QScrollView::updateRanges()
{
    setTravel(horizontalScrollBar(), horizontalScrollBarPolicy(), m_contents.width(),
              visibleWidth());
    setTravel(verticalScrollBar(), verticalScrollBarPolicy(), m_contents.height(), visibleHeight());
}
