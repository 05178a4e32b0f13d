// SPDX-License-Identifier: MIT
// The picture inside the full-screen viewer. It scales the decoder's raster straight into the
// screen memory, so there is no second copy of a large photo. Pen and arrow keys move the visible
// part.
#pragma once

#include "platform/toolkit/QScrollView.h"

#include <QPoint>
#include <QSize>

class PictureScrollView : public QScrollView
{
    Q_OBJECT

public:
    explicit PictureScrollView(QWidget *parent);

    /// Draws another raster. origin: its pixel at the top left of the viewport; lent, changed by
    /// moves, kept inside the picture. raster: turned, lent until the next call; null draws
    /// nothing. size: upright. percent: for the raster's pixels.
    void setRaster(QPoint *origin, const uchar *raster, QSize size, int percent);
    /// Draws the raster at another percent.
    void setPercent(int percent);
    /// Moves the picture by the step of this arrow key.
    void scrollKey(int key);
    void redraw();

protected:
    void contentsMousePressEvent(QMouseEvent *event) override;
    void contentsMouseMoveEvent(QMouseEvent *event) override;
    /// The viewer handles all keys.
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void moveBy(QPoint delta);

    const uchar *m_raster = nullptr;
    int m_width = 0;
    int m_height = 0;
    QPoint *m_origin = nullptr;
    int m_percent = 0;
    QPoint m_lastMouse;
};
