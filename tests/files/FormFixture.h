// SPDX-License-Identifier: MIT
// The browser form in a window of its own, as the main window holds it.
#pragma once

#include "files/FormFile.h"
#include "platform/QPEToolBar.h"
#include "platform/toolkit/QPopupMenu.h"
#include "tests/views/BrowserWorld.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailView.h"

#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QToolButton>

#include <memory>

namespace lumi::test {

class FormFixture
{
public:
    /// Nothing is shown yet: photos and cards can be laid out first.
    FormFixture();
    ~FormFixture();

    /// Makes the form and starts it, and waits until the window has the focus.
    void start();
    /// Until the page holds this many cells. False if it doesn't come to that.
    [[nodiscard]] bool waitForCells(int count);
    [[nodiscard]] QStringList names() const; ///< of the page's items
    [[nodiscard]] FPVThumbnailItem *cell(const QString &fileName) const;
    /// Presses and releases on the frame of an item's cell.
    void tap(const QString &fileName);
    /// Chooses a medium as the user does.
    void choose(const QString &medium);
    [[nodiscard]] QStringList media() const; ///< in the combo
    /// Tells the form that a card came or went, and lets it hear.
    void tellCardChange();
    [[nodiscard]] QList<QPopupMenu *> menus() const; ///< of the menu bar
    /// An entry of any menu, by its number.
    [[nodiscard]] QAction *entry(int id) const;
    /// Opens the menu in question, as far as its entries' state goes.
    void grayOut();

    BrowserWorld world;
    QMainWindow window;
    QPEToolBar toolBar;
    std::unique_ptr<FormFile> form;
    FPVThumbnailView *view = nullptr;
    QComboBox *combo = nullptr;
    QToolButton *up = nullptr;
    QLabel *status = nullptr;
};

} // namespace lumi::test
