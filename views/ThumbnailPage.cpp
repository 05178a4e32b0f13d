// SPDX-License-Identifier: MIT
#include "views/ThumbnailPage.h"

#include "items/FPVItemObject.h"
#include "views/FPVThumbnailItem.h"
#include "widgets/AccessibleControl.h"

namespace {

/// From the cells to the first thumbnail.
constexpr int kFirstThumbnailMs = 10;

} // namespace

lumi::ThumbnailPage::ThumbnailPage(QWidget *viewport, const FPVThumbnailMetrics *metrics,
                                   QSize size)
    : BackgroundWidget(viewport)
    , m_metrics(metrics)
{
    setFocusProxy(viewport);
    lumi::setAccessibleRole(this, QAccessible::List);
    resize(size);
}

FPVThumbnailItem *lumi::ThumbnailPage::addCell(FPVItemObject *item, int index, QPoint place)
{
    auto *cell = new FPVThumbnailItem(this, item, m_metrics, index);
    cell->setFocusProxy(this);
    item->setThumbnailItem(cell);
    const QSize pitch = m_metrics->pitch;
    cell->setGeometry(pitch.width() * place.x(), pitch.height() * place.y(), pitch.width(),
                      pitch.height());
    cell->showPlaceholder(m_metrics->imageSize);
    cell->setCheckVisible(m_metrics->showCheck, false);
    cell->setNameVisible(m_metrics->showName, false);
    cell->setDetailVisible(m_metrics->showDetail, true);
    cell->setNext(nullptr, m_metrics->imageSize, m_metrics->showCheck);
    if (m_chainEnd != nullptr) {
        m_chainEnd->setNext(cell, m_metrics->imageSize, m_metrics->showCheck);
    }
    m_chainStart = m_chainStart != nullptr ? m_chainStart : cell;
    m_chainEnd = cell;
    cell->show();
    show();
    return cell;
}

void lumi::ThumbnailPage::startChain()
{
    if (m_chainStart != nullptr) {
        m_chainStart->startChain(kFirstThumbnailMs);
    }
    m_chainStart = nullptr;
    m_chainEnd = nullptr;
}

void lumi::ThumbnailPage::stop()
{
    m_isStopped = true;
    const QList<FPVThumbnailItem *> all = cells();
    for (FPVThumbnailItem *cell : all) {
        cell->stopChain();
    }
}

void lumi::ThumbnailPage::takeOut(FPVThumbnailItem *cell)
{
    cell->leavePage();
    cell->hide();
    cell->deleteLater();
}

void lumi::ThumbnailPage::leave()
{
    m_isStopped = true;
    const QList<FPVThumbnailItem *> all = cells();
    for (FPVThumbnailItem *cell : all) {
        cell->leavePage();
    }
    setFocusProxy(nullptr);
    hide();
    setParent(nullptr);
    deleteLater();
}

QList<FPVThumbnailItem *> lumi::ThumbnailPage::cells() const
{
    return findChildren<FPVThumbnailItem *>(QString(), Qt::FindDirectChildrenOnly);
}
