// SPDX-License-Identifier: MIT
#include "platform/screen/QWSRegionManager.h"

#include "platform/screen/FrameBuffer.h"

#include <QWidget>
#include <QWindow>

namespace {

QWSDisplay display;

/// A hidden widget in a window on the screen has an empty region anyway.
bool hasWindowOnScreen(const QWidget *widget)
{
    const QWidget *window = widget->window();
    return !window->isMinimized() && window->windowHandle() != nullptr
        && window->windowHandle()->isExposed();
}

} // namespace

QWSDisplay *qt_fbdpy = &display; // NOLINT(readability-identifier-naming): part of the interface

QRegion QWSRegionManager::region(const QWidget *widget) const
{
    if (!hasWindowOnScreen(widget)) {
        return {};
    }
    const FrameBuffer &buffer = FrameBuffer::instance();
    const FrameBuffer::Place place = buffer.place(widget);
    return buffer.toBuffer(widget->visibleRegion().translated(place.origin) & place.area);
}
