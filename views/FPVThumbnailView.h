// SPDX-License-Identifier: MIT
// Shows one page of a folder at a time. A folder may hold thousands of photos on a machine
// with little memory, so the view doesn't scroll over a canvas: it keeps cells for the page on
// screen only, throws them away when the page changes and builds new ones: empty at once,
// frames, names and placeholders after 30 ms, then one thumbnail every 10 ms.
// Slots of the view may run nested event loops (the form shows dialogs out of signals of a
// cell): what goes is first taken out of the view and deleted from the event loop, and a
// builder that was overtaken by another page stops.
// Owns: bars, cells and clipboard. The list is the form's.
#pragma once

#include "files/engine/FPVClipboard.h"
#include "platform/toolkit/QScrollView.h"
#include "views/FPVThumbnailMetrics.h"
#include "views/pageArithmetic.h"

#include <QPixmap>
#include <QPointer>
#include <QTimer>

class BackgroundWidget;
class FPVItemList;
class FPVItemObject;
class FPVThumbnailItem;
class PagingScrollBar;
class QBoxLayout;

class FPVThumbnailView : public QScrollView
{
    Q_OBJECT

public:
    /// list: lent, may be null; it must outlive the view or be replaced.
    FPVThumbnailView(QWidget *parent, FPVItemList *list);
    ~FPVThumbnailView() override;

    void setList(FPVItemList *list);
    void setVerticalMode(bool relayout);
    void setHorizontalMode(bool relayout);
    /// With relayout the page is laid out and built anew.
    void setMetrics(const FPVThumbnailMetrics &metrics, bool relayout);
    /// Changes the page. top: its first item, -1 for the page of index or, if that is negative
    /// too, for the present page. index becomes the cursor if it is on the page. The page is
    /// filled from the event loop; several calls within 30 ms fill it once.
    void showPage(int top, int index, bool setBar);
    /// A lumi::ViewAction.
    void action(int number);
    /// Lists the folder and shows its first page.
    void reload(const QString &path);
    /// A null pixmap means none.
    void setBackground(const QPixmap &pixmap);

    /// The item at the cursor, or null.
    [[nodiscard]] FPVItemObject *currentObject() const;

    /// -1 before the first cursor. May lie behind the end of a list that has shrunk.
    [[nodiscard]] int currentIndex() const { return m_currentIndex; }

    /// Whether the cursor is on an entry for the folder above.
    [[nodiscard]] bool currentIsParentEntry() const;
    /// Move the cursor to the picture after or before it, round the end of the list and past
    /// folders, without building a page. Null, with the cursor where it was, without pictures.
    FPVItemObject *nextPicture();
    FPVItemObject *prevPicture();
    /// Moves the cursor, and the page if it must be.
    void setCurrentObject(FPVItemObject *item);
    /// Moves the cursor and the top of the page without building it or telling anybody.
    void setCurrentObjectQuiet(FPVItemObject *item);
    /// Stops the page and takes the cell of the cursor away, before a window opens that may
    /// outlive the items. The next showPage() builds the page again.
    void dropCursorThumbnail();

    [[nodiscard]] bool anyChecked() const;

    [[nodiscard]] FPVClipboard &clipboard() { return m_clipboard; }

    [[nodiscard]] const QStringList &clipboardPaths() const { return m_clipboard.paths(); }

    /// Whether there is a folder on show, which the following work on. They reload nothing.
    [[nodiscard]] bool hasFolder() const;
    /// Whether something in it has this name.
    [[nodiscard]] bool hasEntry(const QString &name) const;
    /// These do nothing and are false once its medium has gone.
    [[nodiscard]] bool makeFolder(const QString &name);
    [[nodiscard]] bool renameItem(const QString &oldName, const QString &newName);
    /// Photos only.
    [[nodiscard]] bool deleteCurrent();
    /// True if at least one photo went, however many stayed.
    [[nodiscard]] bool deleteChecked();
    /// Tries all subfolders; a folder that stays is no failure.
    [[nodiscard]] bool deleteEmptyFolders();
    /// Put the item at the cursor, or all checked items, on the clipboard; without any it
    /// stays as it was. Nothing is seen of a cut before the paste.
    void copyCurrent();
    void cutCurrent(); ///< photos only
    void copyChecked();
    void cutChecked();
    /// Pastes into the folder on show and shows the page of the first new item.
    [[nodiscard]] lumi::PasteResult paste();
    void checkAll(); ///< photos; folders lose their marks
    void uncheckAll();

    /// The first item of the page.
    [[nodiscard]] int topIndex() const { return m_topIndex; }

Q_SIGNALS:
    void selected(FPVItemObject *item);
    /// An item is to be opened; null means the folder above.
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
    /// Null lays the page out anew without a change of size.
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
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
    void layOut();
    void rebuildContainer(QSize size);
    void discardContainer();
    void showEmptyList();
    void updateBar(bool setValue);
    void fillPage();
    [[nodiscard]] FPVThumbnailItem *makeCell(FPVItemObject *item, int index);
    [[nodiscard]] QList<FPVThumbnailItem *> cells() const;
    void takeOut(FPVThumbnailItem *cell);
    void unfocusCurrent();
    void moveCursor(FPVThumbnailItem *cell);
    [[nodiscard]] bool reloadIfGone(const FPVItemObject *item);
    void reloadFolder();
    void moveOrTurnPage(lumi::ViewAction action);
    void toggleCheck();
    void takeChecked(bool cut);
    void setChecks(bool on);
    FPVItemObject *stepToPicture(int from, int step);

    BackgroundWidget *m_container = nullptr;
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
    unsigned m_generation = 0;      ///< counts containers: a page builder that sees it change stops
    bool m_reloadedForLoss = false; ///< a page is built after such a reload, whatever is missing
};
