// SPDX-License-Identifier: MIT
// A user in front of the program: the main window at the handheld's size, the swap store
// behind it, and taps that go the way of real ones, to whatever lies under the pen.
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

    /// Starts and ends the program; what is on disk stays.
    void startProgram();
    void endProgram();

    /// From the top menu to the browser.
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
    /// Opens the combo and takes a medium of its list.
    void choose(const QString &medium);

    [[nodiscard]] FormFile *browser() const;
    [[nodiscard]] FPVThumbnailView *view() const;
    [[nodiscard]] QComboBox *combo() const;
    [[nodiscard]] QToolButton *upButton() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] FPVThumbnailItem *cell(const QString &fileName) const;
    /// Of the items on the page, in their order.
    [[nodiscard]] QStringList page() const;
    /// The middle of an item's picture; invalid while it has none.
    [[nodiscard]] QColor thumbnailColour(const QString &fileName) const;
    /// Until the page holds exactly these. False if it doesn't come to that.
    [[nodiscard]] bool seesPage(const QStringList &names) const;
    /// Until every photo of the page has a thumbnail. False if that takes too long.
    [[nodiscard]] bool seesThumbnails() const;

    BrowserWorld world;
    std::unique_ptr<SwapSystem> swap;
    std::unique_ptr<MainWindow> window;
};

} // namespace lumi::test
