// SPDX-License-Identifier: MIT
#include "views/FPVPictureView.h"

#include <QMouseEvent>
#include <QResizeEvent>

FPVPictureView::FPVPictureView(QWidget *parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("PictureView"));
    setAlignment(Qt::AlignCenter);
    setAccessibleName(QStringLiteral("Photo"));
}

FPVPictureView::~FPVPictureView() = default;

bool FPVPictureView::setItem(FPVItemObject *item, bool refresh)
{
    m_pixmap.reset();
    m_item = qobject_cast<FPVItemImage *>(item);
    if (refresh) {
        showPicture();
    }
    return true;
}

void FPVPictureView::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (event->size() != event->oldSize()) {
        showPicture();
    }
}

void FPVPictureView::showPicture()
{
    if (m_item && !m_pixmap) {
        const QSize fit = m_item->fitSize(size());
        m_pixmap.reset(m_item->decodedPixmap(fit.width(), fit.height()));
    }
    // If the picture cannot be decoded, the widget is empty.
    setPixmap(m_item && m_pixmap ? *m_pixmap : QPixmap());
}

void FPVPictureView::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    const QPoint at = event->position().toPoint();
    const bool isInside = rect().contains(at) && at.x() > 0 && at.y() > 0;
    if (isInside && m_item) {
        // The receiver may run an event loop for a long time, so this comes last.
        event->accept();
        Q_EMIT decided(m_item);
    }
}

void FPVPictureView::addAccessibleState(QAccessible::State *state) const
{
    state->disabled = !m_item;
}

void FPVPictureView::press()
{
    if (m_item) {
        Q_EMIT decided(m_item);
    }
}
