// SPDX-License-Identifier: MIT
// Modes, layout and the change of pages.
#include "views/FPVThumbnailView.h"

#include "items/FPVItemList.h"
#include "platform/QPEApplication.h"
#include "platform/toolkit/PagingScrollBar.h"
#include "views/FPVThumbnailItem.h"
#include "views/ThumbnailPage.h"
#include "widgets/AccessibleControl.h"

#include <QBoxLayout>
#include <QFile>
#include <QResizeEvent>

#include <algorithm>

namespace {

/// From a page change to the cells of the new page.
constexpr int kFillMs = 30;
/// Wide enough for a finger.
constexpr int kBarThickness = 24;
/// A view without room inside this border is not laid out.
constexpr int kBorder = 2;

} // namespace

FPVThumbnailView::FPVThumbnailView(QWidget *parent, FPVItemList *list)
    : QScrollView(parent, "ThumbnailView")
    , m_list(list)
    , m_vBar(new PagingScrollBar(Qt::Vertical, this))
    , m_hBar(new PagingScrollBar(Qt::Horizontal, this))
    , m_barLayout(new QBoxLayout(QBoxLayout::TopToBottom, this))
{
    setFocusPolicy(Qt::WheelFocus);
    // Qt would hide the bars of the view from screen readers.
    lumi::setAccessibleRole(this, QAccessible::Pane);
    setAccessibleName(QStringLiteral("Photos"));
    setFrameStyle(QFrame::NoFrame);
    viewport()->setFocusProxy(this);
    // The parent is visible between two pages and outside the cells.
    viewport()->setAutoFillBackground(false);
    // The default role is that of text fields, and the cells' labels would inherit it.
    viewport()->setBackgroundRole(QPalette::Window);
    m_vBar->setFixedWidth(kBarThickness);
    m_hBar->setFixedHeight(kBarThickness);
    m_barLayout->setContentsMargins(0, 0, 0, 0);
    m_barLayout->setSpacing(0);
    m_barLayout->addStretch();
    m_barLayout->addWidget(m_vBar, 0, Qt::AlignRight);
    m_barLayout->addWidget(m_hBar, 0, Qt::AlignBottom);
    m_loadTimer.setSingleShot(true);
    connect(&m_loadTimer, &QTimer::timeout, this, &FPVThumbnailView::itemLoadTime);
    connectBars();
}

FPVThumbnailView::~FPVThumbnailView() = default;

void FPVThumbnailView::setList(FPVItemList *list)
{
    m_list = list;
}

void FPVThumbnailView::setVerticalMode(bool relayout)
{
    setMode(false, relayout);
}

void FPVThumbnailView::setHorizontalMode(bool relayout)
{
    setMode(true, relayout);
}

void FPVThumbnailView::setMode(bool isHorizontal, bool relayout)
{
    m_horizontal = isHorizontal;
    m_barLayout->setDirection(isHorizontal ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_hBar->setVisible(isHorizontal);
    m_vBar->setVisible(!isHorizontal);
    if (relayout) {
        resizeEvent(nullptr);
    }
}

void FPVThumbnailView::setMetrics(const FPVThumbnailMetrics &metrics, bool relayout)
{
    m_metrics = metrics;
    if (!relayout) {
        return;
    }
    m_viewSize = size();
    resizeEvent(nullptr);
    showPage(-1, m_currentIndex, true);
}

void FPVThumbnailView::setBackground(const QPixmap &pixmap)
{
    m_background = pixmap;
    if (m_container != nullptr && !pixmap.isNull()) {
        m_container->setBackgroundPixmap(pixmap);
    }
}

void FPVThumbnailView::resizeEvent(QResizeEvent *event)
{
    if (event != nullptr) {
        QScrollView::resizeEvent(event);
    }
    if (event != nullptr && event->size() != m_viewSize) {
        m_viewSize = event->size();
        if (m_container != nullptr) {
            m_container->setGeometry(QRect(QPoint(), m_viewSize));
        }
    } else {
        resizeContents(m_viewSize.width(), m_viewSize.height());
        rebuildContainer(m_viewSize);
        // Only this timer fills the new page.
        m_loadCursor = m_topIndex;
        m_loadTimer.start(kFillMs);
    }
    layOut();
}

void FPVThumbnailView::layOut()
{
    if (m_viewSize.width() <= 2 * kBorder || m_viewSize.height() <= 2 * kBorder) {
        return;
    }
    setHScrollBarMode(AlwaysOff);
    setVScrollBarMode(AlwaysOff);
    m_columns = m_metrics.columns;
    m_rows = m_metrics.rows;
    m_metrics.layOut(QSize(m_horizontal ? 0 : kBarThickness, m_horizontal ? kBarThickness : 0));
}

void FPVThumbnailView::reload(const QString &path)
{
    if (m_list == nullptr || path.isEmpty()) {
        return;
    }
    m_reloadedForLoss = false;
    m_list->load(path, QString());
    showPage(0, -1, true);
}

void FPVThumbnailView::showPage(int top, int index, bool setBar)
{
    const int count = itemCount();
    if (count == 0) {
        m_topIndex = 0;
        m_loadCursor = 0;
        updateBar(true);
        showEmptyList();
        return;
    }
    if (grid().visibleCount() <= 0) {
        return;
    }
    m_topIndex = lumi::pageTop(grid(), count, m_topIndex, top, index);
    m_loadCursor = m_topIndex;
    if (index >= m_topIndex && index < m_topIndex + grid().visibleCount()) {
        m_currentIndex = index;
    }
    resizeContents(m_viewSize.width(), m_viewSize.height());
    rebuildContainer(m_viewSize);
    updateBar(setBar);
    m_loadTimer.start(kFillMs);
}

void FPVThumbnailView::showEmptyList()
{
    m_loadTimer.stop();
    m_reloadedForLoss = false;
    if (m_list == nullptr) {
        return;
    }
    rebuildContainer(QPEApplication::desktopSize());
    m_container->show();
    m_container->update();
}

void FPVThumbnailView::updateBar(bool setValue)
{
    const lumi::BarRange range = lumi::barRange(grid(), itemCount(), m_topIndex);
    PagingScrollBar *bar = activeBar();
    bar->setRange(range.minimum, range.maximum);
    bar->setPageStep(range.pageStep);
    bar->setSingleStep(1);
    if (setValue || range.maximum == 0) {
        bar->setValue(range.value);
    }
}

void FPVThumbnailView::rebuildContainer(QSize size)
{
    if (m_container != nullptr) {
        m_current = nullptr;
        m_container->leave();
    }
    m_container = new lumi::ThumbnailPage(viewport(), &m_metrics, size);
    m_container->setBackgroundPixmap(m_background);
    addChild(m_container, 0, 0);
}

void FPVThumbnailView::itemLoadTime()
{
    if (m_container == nullptr || itemCount() == 0 || grid().visibleCount() <= 0) {
        return;
    }
    fillPage();
}

void FPVThumbnailView::fillPage()
{
    const QPointer<lumi::ThumbnailPage> page(m_container);
    const int end = std::min(itemCount(), m_topIndex + grid().visibleCount());
    for (int index = m_loadCursor; index < end; ++index) {
        FPVItemObject *item = m_list->at(index);
        // Once only: a file whose name cannot be encoded would be missing each time.
        if (!m_reloadedForLoss && !QFile::exists(item->path())) {
            m_reloadedForLoss = true;
            reloadFolder();
            return;
        }
        FPVThumbnailItem *cell = addCell(item, index);
        if (index == m_currentIndex) {
            moveCursor(cell);
            Q_EMIT selected(item);
        }
        if (!page || page->isStopped()) {
            return;
        }
    }
    m_loadCursor = itemCount();
    m_reloadedForLoss = false;
    page->startChain();
}

FPVThumbnailItem *FPVThumbnailView::addCell(FPVItemObject *item, int index)
{
    const int place = index - m_topIndex;
    FPVThumbnailItem *cell
        = m_container->addCell(item, index, QPoint(place % m_columns, place / m_columns));
    if (item->isPicture()) {
        connect(cell, &FPVThumbnailItem::clicked, this, &FPVThumbnailView::itemselected);
    } else {
        connect(cell, &FPVThumbnailItem::clicked, this, &FPVThumbnailView::folderselected);
        connect(cell, &FPVThumbnailItem::decided, this, &FPVThumbnailView::folderdecided);
    }
    return cell;
}

void FPVThumbnailView::dropCursorThumbnail()
{
    m_loadTimer.stop();
    if (m_container != nullptr) {
        m_container->stop();
    }
    if (m_current) {
        lumi::ThumbnailPage::takeOut(m_current);
        m_current = nullptr;
    }
}

int FPVThumbnailView::itemCount() const
{
    return m_list == nullptr ? 0 : m_list->count();
}

lumi::PageGrid FPVThumbnailView::grid() const
{
    return {m_columns, m_rows, m_horizontal};
}

PagingScrollBar *FPVThumbnailView::activeBar() const
{
    return m_horizontal ? m_hBar : m_vBar;
}
