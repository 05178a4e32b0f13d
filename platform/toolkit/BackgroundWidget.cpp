// SPDX-License-Identifier: MIT
#include "platform/toolkit/BackgroundWidget.h"

#include <QLayout>
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

QSize BackgroundWidget::minimumSizeHint() const
{
    if (layout() != nullptr) {
        return QWidget::minimumSizeHint();
    }
    // Not childrenRect(): before the first show all children count as hidden.
    QRect used(0, 0, 0, 0);
    const auto parts = findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *part : parts) {
        used |= QRect(QPoint(), part->geometry().bottomRight());
    }
    return used.size();
}

void BackgroundWidget::paintEvent(QPaintEvent *event)
{
    if (m_background.isNull()) {
        return;
    }
    QPainter painter(this);
    painter.drawTiledPixmap(event->rect(), m_background, event->rect().topLeft());
}
