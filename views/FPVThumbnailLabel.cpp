// SPDX-License-Identifier: MIT
#include "views/FPVThumbnailLabel.h"

#include <QMouseEvent>

FPVThumbnailLabel::FPVThumbnailLabel(QWidget *cell)
    : QLabel(cell)
{
    // File names are not markup.
    setTextFormat(Qt::PlainText);
    setFocusProxy(cell);
}

void FPVThumbnailLabel::mousePressEvent(QMouseEvent *event)
{
    QLabel::mousePressEvent(event);
    Q_EMIT mousePress(event);
    event->accept();
}

void FPVThumbnailLabel::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    Q_EMIT mouseRelease(event);
    event->accept();
}

void FPVThumbnailLabel::mouseDoubleClickEvent(QMouseEvent *event)
{
    QLabel::mouseDoubleClickEvent(event);
    Q_EMIT mouseDoubleClick(event);
    event->accept();
}

void FPVThumbnailLabel::mouseMoveEvent(QMouseEvent *event)
{
    QLabel::mouseMoveEvent(event);
    Q_EMIT mouseMove(event);
    event->accept();
}
