// SPDX-License-Identifier: MIT
// A label of a cell of the thumbnail view. It emits its mouse events as signals and accepts them,
// so that the cell does not get them twice.
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
    /// mousePress() comes first: the second press of a double tap is also a press.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
};
