// SPDX-License-Identifier: MIT
#include "viewer/PictureScrollView.h"

#include "platform/screen/QDirectPainter.h"
#include "platform/screen/QWSRegionManager.h"
#include "viewer/zoomPainting.h"
#include "widgets/AccessibleControl.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kKeyStep = 120;

struct KeyMove
{
    int key = 0;
    QPoint delta; ///< of the picture
};

constexpr KeyMove kKeyMoves[] = {
    {Qt::Key_Left, {kKeyStep, 0}},
    {Qt::Key_Up, {0, kKeyStep}},
    {Qt::Key_Right, {-kKeyStep, 0}},
    {Qt::Key_Down, {0, -kKeyStep}},
};

} // namespace

PictureScrollView::PictureScrollView(QWidget *parent)
    : QScrollView(parent, "ScrollView")
{
    setHScrollBarMode(AlwaysOff);
    setVScrollBarMode(AlwaysOff);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    lumi::setAccessibleRole(this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("Photo"));
    // Before the first picture is drawn its place has the colour of the margin.
    QPalette colours = viewport()->palette();
    colours.setColor(QPalette::Window, QColor::fromRgb(lumi::kMargin32));
    viewport()->setPalette(colours);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setAutoFillBackground(true);
}

void PictureScrollView::setRaster(QPoint *origin, const uchar *raster, QSize size, int percent)
{
    m_origin = origin;
    m_raster = raster;
    m_width = size.width();
    m_height = size.height();
    setPercent(percent);
}

void PictureScrollView::setPercent(int percent)
{
    m_percent = percent;
    redraw();
}

void PictureScrollView::scrollKey(int key)
{
    const auto *move
        = std::find_if(std::begin(kKeyMoves), std::end(kKeyMoves), [key](const KeyMove &row) {
              return row.key == key;
          });
    if (move != std::end(kKeyMoves)) {
        moveBy(move->delta);
    }
}

void PictureScrollView::contentsMousePressEvent(QMouseEvent *event)
{
    m_lastMouse = event->pos();
}

void PictureScrollView::contentsMouseMoveEvent(QMouseEvent *event)
{
    const QPoint delta = event->pos() - m_lastMouse;
    m_lastMouse = event->pos();
    moveBy(delta);
}

void PictureScrollView::moveBy(QPoint delta)
{
    if (m_origin == nullptr) {
        return;
    }
    const QPoint moved = *m_origin - delta;
    *m_origin = QPoint(std::max(0, moved.x()), std::max(0, moved.y()));
    redraw();
}

void PictureScrollView::redraw()
{
    if (m_raster == nullptr) {
        return;
    }
    QDirectPainter painter(viewport());
    const QRect area(painter.xOffset(), painter.yOffset(), painter.width(), painter.height());
    lumi::ZoomSource source{m_raster, {m_width, m_height}, *m_origin, m_percent, painter.depth()};
    source.origin = lumi::zoomOrigin(source, area);
    *m_origin = source.origin;
    const QRegion region = qt_fbdpy->regionManager()->region(viewport());
    if (!region.isEmpty()) {
        lumi::paintZoomed(source, {painter.frameBuffer(), painter.lineStep(), area, region});
    }
}

void PictureScrollView::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
}

void PictureScrollView::resizeEvent(QResizeEvent *event)
{
    QScrollView::resizeEvent(event);
    redraw();
}
