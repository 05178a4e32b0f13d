// SPDX-License-Identifier: MIT
// The browser form in its own window, as in the main window.
#pragma once

#include "files/FormFile.h"
#include "platform/toolkit/QPopupMenu.h"
#include "platform/windows/QPEToolBar.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/nameList.h"
#include "tests/views/BrowserWorld.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailView.h"

#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QToolButton>

#include <memory>

class MyImageButton;

namespace lumi::test {

[[nodiscard]] DialogAnswer yes();
[[nodiscard]] DialogAnswer ok();
[[nodiscard]] DialogAnswer cancel();

class FormFixture
{
public:
    /// Shows nothing yet, so that photos and cards can be prepared.
    FormFixture();
    ~FormFixture();

    /// Creates and starts the form, and waits until the window has the focus.
    void start();
    /// Starts the form with all photos of the store marked. @param current item at the cursor
    void startMarked(const char *current = nullptr);

    /// Whether the listing was read again since then: fresh items have no marks.
    [[nodiscard]] bool wasReadAgain() const { return !view->anyChecked(); }

    /// Puts the cursor on an item of the page.
    void select(const char *name) const;
    /// Chooses a menu entry, even if it is disabled, and answers its dialogs in order. Returns a
    /// line for each dialog. Further lines report errors: the form was not busy, a dialog has
    /// another parent, a dialog stayed open.
    /// @param atWait called once, while the first wait dialog is painted
    QStringList play(int entry, const QList<DialogAnswer> &answers = {},
                     const std::function<void()> &atWait = {});
    [[nodiscard]] QStringList store() const; ///< names of its entries, sorted
    /// Relative paths of all entries at any depth, sorted.
    [[nodiscard]] QStringList storeTree() const;
    /// Waits until the page has this many cells. False after a timeout.
    [[nodiscard]] bool waitForCells(int count);
    [[nodiscard]] QStringList names() const; ///< of the page's items
    [[nodiscard]] FPVThumbnailItem *cell(const QString &fileName) const;
    /// Presses and releases on the frame of an item's cell.
    void tap(const QString &fileName);
    /// Chooses a medium as the user does.
    void choose(const QString &medium);
    [[nodiscard]] QStringList media() const; ///< in the combo
    /// Sends the card message to the form and lets it handle it.
    void tellCardChange();
    [[nodiscard]] MyImageButton *columnButton(int index) const;
    [[nodiscard]] QList<QPopupMenu *> menus() const; ///< of the menu bar
    /// An entry of any menu, by its number.
    [[nodiscard]] QAction *entry(int id) const;
    /// Updates the state of the entries, as when a menu opens.
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
