// SPDX-License-Identifier: MIT
#include "platform/screen/QDirectPainter.h"

#include "platform/QPEApplication.h"

QDirectPainter::QDirectPainter(QWidget *widget)
    : m_widget(widget)
{
    // The offsets must match the memory, even if it is allocated later.
    QPEApplication::holdDesktopSize();
    m_place = FrameBuffer::instance().place(widget);
    m_turned = FrameBuffer::instance().toBuffer(m_place.area);
}

QDirectPainter::~QDirectPainter()
{
    if (m_open) {
        FrameBuffer::instance().close(m_widget);
    }
    QPEApplication::releaseDesktopSize();
}

uchar *QDirectPainter::frameBuffer()
{
    if (!m_open && m_widget != nullptr) {
        m_bits = FrameBuffer::instance().open(m_widget, m_place);
        m_open = true;
    }
    return m_bits;
}

int QDirectPainter::depth() const
{
    return FrameBuffer::instance().depth();
}

int QDirectPainter::lineStep() const
{
    return FrameBuffer::instance().lineStep();
}

int QDirectPainter::width() const
{
    return m_turned.width();
}

int QDirectPainter::height() const
{
    return m_turned.height();
}

int QDirectPainter::xOffset() const
{
    return m_turned.x();
}

int QDirectPainter::yOffset() const
{
    return m_turned.y();
}
