// SPDX-License-Identifier: MIT
// The import form in its own window, with a photo store, two slots, and a stand-in for the user.
#pragma once

#include "import/FormImport.h"
#include "platform/windows/QPEToolBar.h"
#include "tests/import/cardTree.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/StandInSync.h"
#include "tests/views/BrowserWorld.h"

#include <QLabel>
#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>

namespace lumi::test {

class ImportFixture
{
public:
    /// Both slots are empty; nothing is shown yet.
    ImportFixture();
    ~ImportFixture();

    void start();
    /// Inserts a card with these files, each of the given size.
    void insertCard(Slot slot, const QStringList &files, qsizetype size = 700);

    [[nodiscard]] QString card(Slot slot) const { return world.machine->mountPoint(slot); }

    /// Calls the function once, as soon as the condition is true, from the running event loop.
    void when(std::function<bool()> isTime, std::function<void()> doIt);
    /// While the file of that name is being copied.
    void whenInFile(const QString &name, std::function<void()> doIt);
    /// Free space, in steps of 2 KB.
    void setFreeKB(qint64 kb) const;
    void tellCardChange() const;

    [[nodiscard]] QString target(const QString &name) const;
    /// Names of the folders in the store.
    [[nodiscard]] QStringList folders() const;
    /// Presses a button of the current modal dialog.
    static bool pressNow(const QString &button);

    StandInSync sync{"exit 0"}; ///< the real one may take long on a busy disk
    BrowserWorld world;
    QMainWindow window;
    QPEToolBar toolBar;
    std::unique_ptr<FormImport> form;
    MyImageButton *cf = nullptr;
    MyImageButton *sd = nullptr;
    QLabel *memory = nullptr;
    QLabel *capacity = nullptr;
    DialogDriver driver;

private:
    struct Deed
    {
        std::function<bool()> isTime;
        std::function<void()> doIt;
    };

    void look();

    QTimer m_timer;
    QList<Deed> m_deeds;
};

/// Today's name for a folder.
[[nodiscard]] QString todaysFolder();

} // namespace lumi::test
