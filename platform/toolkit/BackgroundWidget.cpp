// SPDX-License-Identifier: MIT
#include "platform/toolkit/BackgroundWidget.h"

#include <QPaintEvent>
#include <QPainter>

BackgroundWidget::BackgroundWidget(QWidget *parent)
    : QWidget(parent)
{ }

void BackgroundWidget::setBackgroundPixmap(const QPixmap &pixmap)
{
    m_background = pixmap;
    update();
}

void BackgroundWidget::paintEvent(QPaintEvent *event)
{
    if (m_background.isNull()) {
        return;
    }
    QPainter painter(this);
    painter.drawTiledPixmap(event->rect(), m_background, event->rect().topLeft());
}
