// SPDX-License-Identifier: MIT
#include "views/FPVPictureView.h"

#include <QMouseEvent>
#include <QResizeEvent>

FPVPictureView::FPVPictureView(QWidget *parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("PictureView"));
    setAlignment(Qt::AlignCenter);
}

FPVPictureView::~FPVPictureView() = default;

bool FPVPictureView::setItem(FPVItemObject *item, bool refresh)
{
    m_pixmap.reset();
    m_item = qobject_cast<FPVItemImage *>(item);
    if (refresh) {
        QResizeEvent event(size(), size());
        m_refreshing = true;
        resizeEvent(&event);
        m_refreshing = false;
    }
    return true;
}

void FPVPictureView::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (m_refreshing || event->size() != event->oldSize()) {
        showPicture();
    }
}

void FPVPictureView::showPicture()
{
    if (m_item && !m_pixmap) {
        const QSize fit = m_item->fitSize(size());
        m_pixmap.reset(m_item->decodedPixmap(fit.width(), fit.height()));
    }
    // A picture that can't be decoded leaves the place empty.
    setPixmap(m_item && m_pixmap ? *m_pixmap : QPixmap());
}

void FPVPictureView::mousePressEvent(QMouseEvent *event)
{
    QLabel::mousePressEvent(event);
}

void FPVPictureView::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    const QPoint at = event->position().toPoint();
    const bool isInside = rect().contains(at) && at.x() > 0 && at.y() > 0;
    if (isInside && m_item) {
        // Whoever opens the picture may stay long: nothing is left to do here afterwards.
        event->accept();
        Q_EMIT decided(m_item);
    }
}
