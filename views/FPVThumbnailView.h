// SPDX-License-Identifier: MIT
// Shows one page of a folder at a time. A folder may have thousands of photos and memory is small,
// so there are cells for the visible page only. A change of page shows an empty page at once,
// frames, names and placeholders after 30 ms, then one thumbnail every 10 ms.
// A slot of one of the signals may run an event loop: the form shows dialogs.
// Owns: bars, page and clipboard. The list belongs to the form.
#pragma once

#include "files/engine/FPVClipboard.h"
#include "platform/toolkit/QScrollView.h"
#include "views/FPVThumbnailMetrics.h"
#include "views/pageArithmetic.h"

#include <QPixmap>
#include <QPointer>
#include <QTimer>

class FPVItemList;
class FPVItemObject;
class FPVThumbnailItem;
class PagingScrollBar;
class QBoxLayout;

namespace lumi {
class ThumbnailPage;
} // namespace lumi

class FPVThumbnailView : public QScrollView
{
    Q_OBJECT

public:
    /// list: lent, may be null. It must outlive the view or be replaced.
    FPVThumbnailView(QWidget *parent, FPVItemList *list);
    ~FPVThumbnailView() override;

    void setList(FPVItemList *list);
    void setVerticalMode(bool relayout);
    void setHorizontalMode(bool relayout);
    /// With relayout the page is laid out and built again.
    void setMetrics(const FPVThumbnailMetrics &metrics, bool relayout);
    /// Changes the page. top: its first item, -1 for the page of index or, if that is negative
    /// too, for the present page. index becomes the cursor if it is on the page. The page is
    /// filled from the event loop. Several calls within 30 ms fill it once.
    void showPage(int top, int index, bool setBar);
    /// A lumi::ViewAction.
    void action(int number);
    /// Lists the folder and shows its first page.
    void reload(const QString &path);
    /// A null pixmap removes the background of later pages.
    void setBackground(const QPixmap &pixmap);

    /// The item at the cursor, or null.
    [[nodiscard]] FPVItemObject *currentObject() const;

    /// -1 before the first cursor. May lie past the end of a list that has shrunk.
    [[nodiscard]] int currentIndex() const { return m_currentIndex; }

    /// Whether the cursor is on the entry "..".
    [[nodiscard]] bool currentIsParentEntry() const;
    /// Move the cursor to the next or previous picture without building a page. They skip folders
    /// and wrap at the end of the list. Null, with the cursor unchanged, without pictures.
    FPVItemObject *nextPicture();
    FPVItemObject *prevPicture();
    /// Moves the cursor, and changes the page if necessary.
    void setCurrentObject(FPVItemObject *item);
    /// Moves the cursor and the top of the page. Builds no page and emits nothing.
    void setCurrentObjectQuiet(FPVItemObject *item);
    /// Stops the page and removes the cell of the cursor, before a window opens during which the
    /// items may be deleted. The next showPage() builds the page again.
    void dropCursorThumbnail();

    [[nodiscard]] bool anyChecked() const;

    [[nodiscard]] FPVClipboard &clipboard() { return m_clipboard; }

    [[nodiscard]] QStringList clipboardPaths() const { return m_clipboard.paths(); }

    /// Whether there is a folder to work on. The following functions do not reload it.
    [[nodiscard]] bool hasFolder() const;
    /// Whether the folder has an entry of this name.
    [[nodiscard]] bool hasEntry(const QString &name) const;
    /// These do nothing and return false after its medium was removed.
    [[nodiscard]] bool makeFolder(const QString &name);
    [[nodiscard]] bool renameItem(const QString &oldName, const QString &newName);
    /// Photos only.
    [[nodiscard]] bool deleteCurrent();
    /// True if at least one photo was deleted.
    [[nodiscard]] bool deleteChecked();
    /// Tries all subfolders. A folder that stays is no failure.
    [[nodiscard]] bool deleteEmptyFolders();
    /// Put the item at the cursor, or all checked items, on the clipboard. Without any the
    /// clipboard stays unchanged. A cut changes no file before the paste.
    void copyCurrent();
    void cutCurrent(); ///< photos only
    void copyChecked();
    void cutChecked();
    /// Pastes into the folder and shows the page of the first new item.
    [[nodiscard]] lumi::PasteResult paste();
    void checkAll(); ///< photos only; unchecks folders
    void uncheckAll();

    /// The first item of the page.
    [[nodiscard]] int topIndex() const { return m_topIndex; }

Q_SIGNALS:
    void selected(FPVItemObject *item);
    /// An item is to be opened. Null means the parent folder.
    void decided(FPVItemObject *item);

public Q_SLOTS:
    void itemselected(FPVThumbnailItem *cell);
    void folderselected(FPVThumbnailItem *cell);
    void folderdecided(FPVThumbnailItem *cell);
    void itemLoadTime();
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void vScroll_update();
    void vScroll_update_nextPage();
    void vScroll_update_prevPage();
    void vScroll_update_nextLine();
    void vScroll_update_prevLine();
    void hScroll_update();
    void hScroll_update_nextPage();
    void hScroll_update_prevPage();
    void hScroll_update_nextLine();
    void hScroll_update_prevLine();
    // NOLINTEND(readability-identifier-naming)

protected:
    /// A swipe turns the page.
    bool event(QEvent *event) override;
    /// Null lays the page out again at the same size.
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    /// Without a cursor, as in a new form, Tab puts it on the page and the focus stays.
    bool focusNextPrevChild(bool next) override;
    /// Focus that arrives by Tab puts the cursor on the page.
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    [[nodiscard]] bool isOnItsMedium() const;
    [[nodiscard]] int itemCount() const;
    [[nodiscard]] bool hasCursor() const;
    [[nodiscard]] lumi::PageGrid grid() const;
    [[nodiscard]] PagingScrollBar *activeBar() const;
    void connectBars();
    void setMode(bool isHorizontal, bool relayout);
    void layOut();
    void rebuildContainer(QSize size);
    void showEmptyList();
    void updateBar(bool setValue);
    void fillPage();
    FPVThumbnailItem *addCell(FPVItemObject *item, int index);
    void unfocusCurrent();
    void moveCursor(FPVThumbnailItem *cell);
    [[nodiscard]] bool reloadIfGone(const FPVItemObject *item);
    void reloadFolder();
    bool startCursor();
    void moveOrTurnPage(lumi::ViewAction action);
    void toggleCheck();
    void takeChecked(bool cut);
    void setChecks(bool on);
    FPVItemObject *stepToPicture(int from, int step);

    lumi::ThumbnailPage *m_container = nullptr;
    QPixmap m_background;
    FPVItemList *m_list;
    int m_columns = 0;
    int m_rows = 0;
    QPointer<FPVThumbnailItem> m_current;
    FPVThumbnailMetrics m_metrics;
    bool m_horizontal = true;
    QTimer m_loadTimer;
    int m_topIndex = 0;
    int m_loadCursor = 0;
    QSize m_viewSize{1024, 1024};
    PagingScrollBar *m_vBar;
    PagingScrollBar *m_hBar;
    QBoxLayout *m_barLayout;
    FPVClipboard m_clipboard;
    int m_currentIndex = -1;
    bool m_reloadedForLoss = false; ///< after such a reload a page is built, whatever is missing
};
