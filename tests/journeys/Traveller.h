// SPDX-License-Identifier: MIT
// A user of the program: the main window at the handheld's size, the swap store, and taps that are
// delivered like real ones to the widget at their position.
#pragma once

#include "app/MainWindow.h"
#include "swap/SwapSystem.h"
#include "tests/views/BrowserWorld.h"

#include <QPoint>

#include <memory>

class FormFile;
class FPVThumbnailItem;
class FPVThumbnailView;
class QComboBox;
class QLabel;
class QToolButton;

namespace lumi::test {

class Traveller
{
public:
    Traveller();
    ~Traveller();

    /// Starts and ends the program. Files stay.
    void startProgram();
    void endProgram();

    /// Goes from the top menu to the browser.
    void openBrowser();
    void tap(QWidget *widget, QPoint at);
    void tapMiddle(QWidget *widget);
    void tapItem(const QString &fileName);
    /// A button of the column at the left.
    void tapColumn(int button);
    /// Opens a menu of the browser and taps one of its entries.
    void chooseEntry(const QString &menu, const QString &entry);
    /// A tap on the check box of a photo.
    void tapCheckBox(const QString &fileName);
    /// Chooses a medium in the combo box.
    void choose(const QString &medium);

    [[nodiscard]] FormFile *browser() const;
    [[nodiscard]] FPVThumbnailView *view() const;
    [[nodiscard]] QComboBox *combo() const;
    [[nodiscard]] QToolButton *upButton() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] FPVThumbnailItem *cell(const QString &fileName) const;
    /// Of the items on the page, in their order.
    [[nodiscard]] QStringList page() const;
    /// The colour in the middle of an item's picture; invalid while there is none.
    [[nodiscard]] QColor thumbnailColour(const QString &fileName) const;
    /// Waits until the page has exactly these items. False after a timeout.
    [[nodiscard]] bool seesPage(const QStringList &names) const;
    /// Waits until every photo of the page has a thumbnail. False after a timeout.
    [[nodiscard]] bool seesThumbnails() const;

    BrowserWorld world;
    std::unique_ptr<SwapSystem> swap;
    std::unique_ptr<MainWindow> window;
};

} // namespace lumi::test
