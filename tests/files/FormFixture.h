// SPDX-License-Identifier: MIT
// The browser form in a window of its own, as the main window holds it.
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
    /// Nothing is shown yet: photos and cards can be laid out first.
    FormFixture();
    ~FormFixture();

    /// Makes the form and starts it, and waits until the window has the focus.
    void start();
    /// Starts over the store, with the cursor on this item, if any, and all photos marked.
    void startMarked(const char *current = nullptr);

    /// Whether the listing was read again since then: fresh items have no marks.
    [[nodiscard]] bool wasReadAgain() const { return !view->anyChecked(); }

    /// Puts the cursor on an item of the page.
    void select(const char *name) const;
    /// Chooses a menu entry, however gray, and answers its dialogs in order. A line for each of
    /// them comes back, and more if the form isn't busy meanwhile, or a dialog isn't the form's
    /// own or stays. @param atWait done once, while the first wait dialog is painted
    QStringList play(int entry, const QList<DialogAnswer> &answers = {},
                     const std::function<void()> &atWait = {});
    [[nodiscard]] QStringList store() const; ///< names of all that lies in it, sorted
    /// The same with all that lies below, as paths from the store.
    [[nodiscard]] QStringList storeTree() const;
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
    [[nodiscard]] MyImageButton *columnButton(int index) const;
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
