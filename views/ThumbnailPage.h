// SPDX-License-Identifier: MIT
// One page of a thumbnail view: its background and the cells on it. The cells are filled one after
// the other in a chain that starts when the page is complete.
// A slot of a cell's signal may replace or stop the page. leave() therefore deletes nothing before
// the event loop runs, and whoever builds the page checks isStopped().
// Owns: the cells.
#pragma once

#include "platform/toolkit/BackgroundWidget.h"
#include "views/FPVThumbnailMetrics.h"

class FPVItemObject;
class FPVThumbnailItem;

namespace lumi {

class ThumbnailPage : public BackgroundWidget
{
    Q_OBJECT

public:
    /// Hidden until it has a cell. metrics: lent, outlives the page.
    ThumbnailPage(QWidget *viewport, const FPVThumbnailMetrics *metrics, QSize size);

    /// A new cell with a placeholder, shown. index: in the list. place: column and row.
    FPVThumbnailItem *addCell(FPVItemObject *item, int index, QPoint place);
    /// The first of the cells added since the last call gets its thumbnail soon, then the next.
    void startChain();

    /// Loads no further thumbnails.
    void stop();

    [[nodiscard]] bool isStopped() const { return m_isStopped; }

    /// Removes a cell at once and deletes it later.
    static void takeOut(FPVThumbnailItem *cell);
    /// Removes the page from the view at once and deletes it later.
    void leave();

private:
    [[nodiscard]] QList<FPVThumbnailItem *> cells() const;

    const FPVThumbnailMetrics *m_metrics;
    FPVThumbnailItem *m_chainStart = nullptr;
    FPVThumbnailItem *m_chainEnd = nullptr;
    bool m_isStopped = false;
};

} // namespace lumi
