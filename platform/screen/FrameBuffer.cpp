// SPDX-License-Identifier: MIT
#include "platform/screen/FrameBuffer.h"

#include "platform/Machine.h"
#include "platform/QPEApplication.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QTransform>
#include <QWidget>

#include <algorithm>

namespace {

constexpr int kNarrowDepth = 16;
constexpr int kWideDepth = 32;

int movedInside(int position, int length, int room)
{
    return std::clamp(position, 0, std::max(0, room - length));
}

bool isBeingPainted(const QWidget *widget)
{
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (widget->testAttribute(Qt::WA_WState_InPaintEvent)) {
            return true;
        }
    }
    return false;
}

/// Paints the part of the turned picture inside `region`. `origin` is the widget's (0, 0).
void paintTurned(QPainter &painter, const QImage &turned, const QPoint &origin,
                 const QRegion &region)
{
    painter.translate(-origin.x(), turned.width() - origin.y());
    painter.rotate(-90);
    for (const QRect &rect : region) {
        const QRect part = rect.translated(origin);
        const QPoint start(turned.width() - part.y() - part.height(), part.x());
        painter.drawImage(start, turned, QRect(start, part.size().transposed()));
    }
}

/// For screens with a device pixel ratio other than 1. Turning before scaling is by far the faster
/// order. Everything is drawn, because parts scaled one by one would show seams; the painter clips
/// to the region of the paint event.
void paintScaled(QPainter &painter, const QImage &turned, const QPoint &topLeft)
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(topLeft, turned.transformed(QTransform().rotate(-90)));
}

} // namespace

FrameBuffer &FrameBuffer::instance()
{
    static FrameBuffer buffer;
    return buffer;
}

int FrameBuffer::depth() const
{
    if (isAllocated()) {
        return m_image.depth();
    }
    return Machine::instance().panelDepth() == kNarrowDepth ? kNarrowDepth : kWideDepth;
}

QSize FrameBuffer::desktopSize() const
{
    return isAllocated() ? m_image.size().transposed() : QPEApplication::desktopSize();
}

int FrameBuffer::lineStep() const
{
    return (desktopSize().height() * (depth() / 8) + 3) / 4 * 4;
}

FrameBuffer::Place FrameBuffer::place(const QWidget *widget) const
{
    const QWidget *window = widget->window();
    const QSize desktop = desktopSize();
    const QPoint claimed = window->mapToGlobal(QPoint()) - window->screen()->geometry().topLeft();
    const QPoint corner(movedInside(claimed.x(), window->width(), desktop.width()),
                        movedInside(claimed.y(), window->height(), desktop.height()));
    const QPoint origin = corner + widget->mapTo(window, QPoint());
    return {origin, QRect(origin, widget->size()) & QRect(QPoint(), desktop)};
}

QRect FrameBuffer::toBuffer(const QRect &rect) const
{
    return {desktopSize().height() - rect.y() - rect.height(), rect.x(), rect.height(),
            rect.width()};
}

QRegion FrameBuffer::toBuffer(const QRegion &region) const
{
    QRegion turned;
    for (const QRect &rect : region) {
        turned += toBuffer(rect);
    }
    return turned;
}

uchar *FrameBuffer::open(QWidget *widget, const Place &place)
{
    ++m_painters;
    if (!isAllocated() && !allocate()) {
        return nullptr;
    }
    if (widget->isVisible()) {
        if (!hasSurface(widget)) {
            widget->installEventFilter(this);
            connect(widget, &QObject::destroyed, this, &FrameBuffer::drop);
        }
        Place &surface = m_surfaces[widget];
        if (surface != place) {
            movePixels(surface, place);
            surface = place;
        }
    }
    return m_image.bits();
}

void FrameBuffer::close(QWidget *widget)
{
    --m_painters;
    if (widget != nullptr && hasSurface(widget)) {
        if (isBeingPainted(widget)) {
            widget->update();
        } else {
            widget->repaint();
        }
    }
    freeIfUnused();
}

bool FrameBuffer::hasSurface(const QWidget *widget) const
{
    return m_surfaces.contains(widget);
}

bool FrameBuffer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide && !event->spontaneous()) {
        // A spontaneous hide event only means that the window was minimised.
        drop(watched);
    } else if (event->type() == QEvent::Paint) {
        paint(static_cast<QWidget *>(watched), static_cast<QPaintEvent *>(event));
        return true;
    }
    return false;
}

bool FrameBuffer::allocate()
{
    const QSize desktop = QPEApplication::desktopSize();
    m_image = QImage(desktop.transposed(),
                     depth() == kNarrowDepth ? QImage::Format_RGB16 : QImage::Format_RGB32);
    if (!isAllocated()) {
        return false;
    }
    m_image.fill(Qt::black);
    QPEApplication::holdDesktopSize();
    return true;
}

void FrameBuffer::freeIfUnused()
{
    if (isAllocated() && m_painters == 0 && m_surfaces.isEmpty()) {
        m_image = QImage();
        QPEApplication::releaseDesktopSize();
    }
}

void FrameBuffer::movePixels(const Place &from, const Place &to)
{
    const QRect kept = from.area & to.area.translated(from.origin - to.origin);
    const QImage pixels = kept.isEmpty() ? QImage() : m_image.copy(toBuffer(kept));
    QPainter painter(&m_image);
    painter.fillRect(toBuffer(to.area), Qt::black);
    painter.drawImage(toBuffer(kept.translated(to.origin - from.origin)).topLeft(), pixels);
}

void FrameBuffer::drop(QObject *widget)
{
    widget->removeEventFilter(this);
    disconnect(widget, nullptr, this, nullptr);
    m_surfaces.remove(widget);
    freeIfUnused();
}

void FrameBuffer::paint(QWidget *widget, QPaintEvent *event)
{
    const Place surface = m_surfaces.value(widget);
    const QRect drawn = surface.area.translated(-surface.origin);
    if (!event->region().subtracted(drawn).isEmpty()) {
        static_cast<QObject *>(widget)->event(event);
    }
    const QRegion region = event->region() & drawn;
    if (region.isEmpty()) {
        return;
    }
    QPainter painter(widget);
    if (qFuzzyCompare(painter.device()->devicePixelRatioF(), 1.0)) {
        paintTurned(painter, m_image, surface.origin, region);
    } else {
        paintScaled(painter, m_image.copy(toBuffer(surface.area)), drawn.topLeft());
    }
}
