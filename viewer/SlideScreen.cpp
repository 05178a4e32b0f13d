// SPDX-License-Identifier: MIT
#include "viewer/SlideScreen.h"

#include "platform/screen/QDirectPainter.h"

#include <utility>

lumi::SlideScreen::SlideScreen(QWidget *widget, QSize size)
    : m_widget(widget)
    , m_size(size)
    , m_depth(QDirectPainter(widget).depth())
{ }

bool lumi::SlideScreen::isPrevious(const FPVItemImage *item) const
{
    return m_previous && m_previous->item == item;
}

FPVItemImage *lumi::SlideScreen::showNext()
{
    forgetSign();
    m_previous = m_present;
    m_present = m_next;
    redraw();
    return m_present->item;
}

FPVItemImage *lumi::SlideScreen::showPrevious()
{
    forgetSign();
    m_present = std::move(m_previous);
    m_next = m_present;
    redraw();
    return m_present->item;
}

void lumi::SlideScreen::redraw()
{
    if (m_present) {
        drawInto([this](const SlideTarget &target) {
            drawSlide(target, {m_present->bits.get(), m_present->size}, m_sign);
        });
    }
}

void lumi::SlideScreen::drawSign(SlideSign sign)
{
    m_sign = sign;
    drawInto([sign](const SlideTarget &target) {
        drawSlideSign(target, sign);
    });
}

/// Nothing is drawn while the screen has another depth than the rasters.
template <class Draw> void lumi::SlideScreen::drawInto(Draw draw)
{
    QDirectPainter painter(m_widget);
    uchar *bits = painter.frameBuffer();
    if (bits != nullptr && painter.depth() == m_depth) {
        draw(SlideTarget{bits, painter.lineStep(), m_depth, m_size});
    }
}
