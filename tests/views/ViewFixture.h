// SPDX-License-Identifier: MIT
// A thumbnail view over a list, on the screen, with the keyboard focus.
#pragma once

#include "items/FPVItemList.h"
#include "platform/toolkit/PagingScrollBar.h"
#include "tests/views/BrowserWorld.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailView.h"

#include <QList>
#include <QStringList>

#include <memory>

namespace lumi::test {

struct ViewFixture
{
    ViewFixture();

    void showLarge();
    void showSmall();
    void showInfo();
    /// Fills the list with pictures that share one file, and shows them in large mode.
    void fill(int count);
    /// Lists a folder of the photo store.
    void list(const QString &folder = QString());
    /// Waits for the cells of the page. False if that takes too long.
    [[nodiscard]] bool waitForPage();
    /// Waits until the chain has reached all cells.
    [[nodiscard]] bool waitForThumbnails();

    /// Of all items of the list.
    [[nodiscard]] QStringList names() const;
    /// Marks these items, with a blank between their names, and no others.
    void check(const char *fileNames);
    /// Whether the store has an entry of this name.
    [[nodiscard]] bool exists(const char *name) const;

    [[nodiscard]] QList<FPVThumbnailItem *> cells() const;
    /// Of the cells, in their order.
    [[nodiscard]] QList<int> indexes() const;
    [[nodiscard]] FPVThumbnailItem *cellOf(int index) const;
    /// The index of the cell with the cursor, -1 without one.
    [[nodiscard]] int shownCursor() const;
    [[nodiscard]] NotingImage *noting(int index);
    [[nodiscard]] QWidget *container() const;
    void key(int key);
    /// Taps a place of the cell that belongs to its picture or frame.
    void tap(int index);

    BrowserWorld world;
    FPVItemList items;
    FPVThumbnailView view;
    PagingScrollBar *vBar;
    PagingScrollBar *hBar;
    QStringList news; ///< "selected a", "decided b", "up"
};

} // namespace lumi::test
