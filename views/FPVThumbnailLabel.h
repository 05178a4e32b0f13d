// SPDX-License-Identifier: MIT
// The label from which a cell of the thumbnail view is built: a QLabel that passes its mouse
// events on as signals. It takes the events, so that the cell below doesn't see them twice.
#pragma once

#include <QLabel>

class FPVThumbnailLabel : public QLabel
{
    Q_OBJECT

public:
    /// cell: parent and focus proxy.
    explicit FPVThumbnailLabel(QWidget *cell);

Q_SIGNALS:
    void mousePress(QMouseEvent *event);
    void mouseRelease(QMouseEvent *event);
    void mouseDoubleClick(QMouseEvent *event);
    void mouseMove(QMouseEvent *event);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    /// The second press of a double tap is a press as well: mousePress() comes first.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
};
