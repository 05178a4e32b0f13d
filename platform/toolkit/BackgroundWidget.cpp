// SPDX-License-Identifier: MIT
#include "platform/toolkit/BackgroundWidget.h"

#include <QLayout>
#include <QPaintEvent>
#include <QPainter>

namespace {

/// In lines. Qt paints a tiled area of about 96 lines or more with a thread pool. Waking the threads
/// takes longer than painting.
constexpr int kStripHeight = 64;

} // namespace

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
    for (const QRect &rect : event->region()) {
        for (int top = rect.top(); top <= rect.bottom(); top += kStripHeight) {
            const QRect strip = rect & QRect(rect.left(), top, rect.width(), kStripHeight);
            painter.drawTiledPixmap(strip, m_background, strip.topLeft());
        }
    }
}
