// SPDX-License-Identifier: MIT
// Access to the screen memory behind one widget. It lives for one drawing: its destructor shows
// what was written. All numbers refer to the turned memory, in which a line is a column of the
// screen (see FrameBuffer.h).
#pragma once

#include "platform/screen/FrameBuffer.h"

#include <QPointer>
#include <QWidget>

class QDirectPainter
{
public:
    explicit QDirectPainter(QWidget *widget);
    QDirectPainter(const QDirectPainter &) = delete;
    QDirectPainter &operator=(const QDirectPainter &) = delete;
    ~QDirectPainter();

    /// First byte of the memory, with desktop-width lines of lineStep() bytes. Stays valid as long
    /// as the painter does. Null if it can't be allocated. If this is never called, the screen does
    /// not change.
    [[nodiscard]] uchar *frameBuffer();

    /// 16 (RGB565) or 32.
    [[nodiscard]] int depth() const;
    /// Bytes.
    [[nodiscard]] int lineStep() const;
    /// Pixels of a line that belong to the widget: its height on the screen.
    [[nodiscard]] int width() const;
    /// Lines that belong to the widget: its width on the screen.
    [[nodiscard]] int height() const;
    /// First pixel of a line, and first line, that belong to the widget.
    [[nodiscard]] int xOffset() const;
    [[nodiscard]] int yOffset() const;

private:
    QPointer<QWidget> m_widget;
    FrameBuffer::Place m_place;
    QRect m_turned;
    bool m_open = false;
    uchar *m_bits = nullptr;
};
