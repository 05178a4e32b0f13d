// SPDX-License-Identifier: MIT
// The bars, and the cursor by taps and keys.
#include "items/FPVItemList.h"
#include "platform/Machine.h"
#include "platform/QPEApplication.h"
#include "platform/toolkit/PagingScrollBar.h"
#include "platform/touch/gestures.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailView.h"
#include "views/folderRoots.h"

#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>
#include <QScrollArea>
#include <QWheelEvent>

namespace {

/// Up and Down of the handheld's own keyboard are next to each other, like Left and Right.
bool arrowsOnlyStep()
{
    return Machine::instance().hinge() != 0 || QPEApplication::isOwnKeyboard();
}

/// A form that is wider than the screen stands in a scroll area.
void scrollTo(QWidget *cell)
{
    for (QWidget *outer = cell->parentWidget(); outer != nullptr; outer = outer->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(outer)) {
            area->ensureWidgetVisible(cell, 0, 0);
        }
    }
}

} // namespace

void FPVThumbnailView::connectBars()
{
    using Bar = PagingScrollBar;
    using View = FPVThumbnailView;
    connect(m_vBar, &Bar::sliderReleased, this, &View::vScroll_update);
    connect(m_vBar, &Bar::nextLine, this, &View::vScroll_update_nextLine);
    connect(m_vBar, &Bar::prevLine, this, &View::vScroll_update_prevLine);
    connect(m_vBar, &Bar::nextPage, this, &View::vScroll_update_nextPage);
    connect(m_vBar, &Bar::prevPage, this, &View::vScroll_update_prevPage);
    connect(m_hBar, &Bar::sliderReleased, this, &View::hScroll_update);
    connect(m_hBar, &Bar::nextLine, this, &View::hScroll_update_nextLine);
    connect(m_hBar, &Bar::prevLine, this, &View::hScroll_update_prevLine);
    connect(m_hBar, &Bar::nextPage, this, &View::hScroll_update_nextPage);
    connect(m_hBar, &Bar::prevPage, this, &View::hScroll_update_prevPage);
}

// NOLINTBEGIN(readability-identifier-naming): parts of the interface
void FPVThumbnailView::vScroll_update()
{
    showPage(lumi::topForBar(m_columns, m_vBar->value()), -1, true);
}

void FPVThumbnailView::vScroll_update_nextPage()
{
    showPage(lumi::topOnePageOn(grid(), itemCount(), m_topIndex), -1, false);
}

void FPVThumbnailView::vScroll_update_prevPage()
{
    showPage(lumi::topOnePageBack(grid(), m_topIndex), -1, false);
}

void FPVThumbnailView::vScroll_update_nextLine()
{
    showPage(lumi::topOneLineOn(m_columns, itemCount(), m_topIndex), -1, false);
}

void FPVThumbnailView::vScroll_update_prevLine()
{
    showPage(lumi::topOneLineBack(m_columns, m_topIndex), -1, false);
}

void FPVThumbnailView::hScroll_update()
{
    showPage(lumi::topForBar(m_columns, m_hBar->value()), -1, true);
}

void FPVThumbnailView::hScroll_update_nextPage()
{
    hScroll_update_nextLine();
}

void FPVThumbnailView::hScroll_update_prevPage()
{
    hScroll_update_prevLine();
}

void FPVThumbnailView::hScroll_update_nextLine()
{
    vScroll_update_nextLine();
}

void FPVThumbnailView::hScroll_update_prevLine()
{
    vScroll_update_prevLine();
}

// NOLINTEND(readability-identifier-naming)

void FPVThumbnailView::itemselected(FPVThumbnailItem *cell)
{
    if (cell == nullptr) {
        unfocusCurrent();
        return;
    }
    FPVItemObject *item = cell->item();
    if (item == nullptr || reloadIfGone(item)) {
        return;
    }
    m_currentIndex = cell->index();
    if (cell == m_current) {
        Q_EMIT decided(item);
        return;
    }
    moveCursor(cell);
    Q_EMIT selected(item);
}

void FPVThumbnailView::folderselected(FPVThumbnailItem *cell)
{
    FPVItemObject *item = cell->item();
    if (item == nullptr || reloadIfGone(item)) {
        return;
    }
    m_currentIndex = cell->index();
    moveCursor(cell);
    Q_EMIT selected(item);
}

void FPVThumbnailView::folderdecided(FPVThumbnailItem *cell)
{
    FPVItemObject *item = cell->item();
    if (item != nullptr && !reloadIfGone(item)) {
        Q_EMIT decided(item);
    }
}

void FPVThumbnailView::unfocusCurrent()
{
    if (m_current) {
        m_current->setFocusMark(false, true);
    }
    m_current = nullptr;
}

void FPVThumbnailView::moveCursor(FPVThumbnailItem *cell)
{
    if (m_current != cell) {
        unfocusCurrent();
    }
    m_current = cell;
    cell->setFocusMark(true, true);
    scrollTo(cell);
}

bool FPVThumbnailView::reloadIfGone(const FPVItemObject *item)
{
    if (QFile::exists(item->path())) {
        return false;
    }
    reloadFolder();
    return true;
}

void FPVThumbnailView::reloadFolder()
{
    unfocusCurrent();
    m_list->load(m_list->currentPath(), QString());
    showPage(-1, -1, true);
}

void FPVThumbnailView::keyPressEvent(QKeyEvent *event)
{
    QScrollView::keyPressEvent(event);
    lumi::ViewAction wanted = lumi::viewAction(event->key(), false);
    if (currentObject() == nullptr) {
        if (wanted != lumi::ViewAction::FolderUp) {
            return;
        }
    } else if (wanted == lumi::ViewAction::Up || wanted == lumi::ViewAction::Down) {
        wanted = lumi::viewAction(event->key(), arrowsOnlyStep());
    }
    if (wanted != lumi::ViewAction::None) {
        event->accept();
        action(static_cast<int>(wanted));
    }
}

void FPVThumbnailView::action(int number)
{
    switch (static_cast<lumi::ViewAction>(number)) {
    case lumi::ViewAction::ToggleCheck:
        toggleCheck();
        break;
    case lumi::ViewAction::Open:
        if (FPVItemObject *item = currentObject()) {
            Q_EMIT decided(item);
        }
        break;
    case lumi::ViewAction::FolderUp:
        if (m_list != nullptr && !lumi::isFolderRoot(m_list->currentPath())) {
            Q_EMIT decided(nullptr);
        }
        break;
    default:
        moveOrTurnPage(static_cast<lumi::ViewAction>(number));
        break;
    }
}

void FPVThumbnailView::moveOrTurnPage(lumi::ViewAction action)
{
    const lumi::CursorMove move
        = lumi::cursorMove(action, grid(), itemCount(), m_topIndex, m_currentIndex);
    if (move.kind == lumi::CursorMove::OtherPage) {
        showPage(move.top, move.target, true);
        return;
    }
    // Keys cannot move a cursor that is not on the page back onto it.
    if (move.kind == lumi::CursorMove::Nothing || !m_current) {
        return;
    }
    FPVItemObject *item = m_list->at(move.target);
    if (FPVThumbnailItem *cell = item->thumbnailItem()) {
        m_currentIndex = move.target;
        moveCursor(cell);
        Q_EMIT selected(item);
    }
}

void FPVThumbnailView::toggleCheck()
{
    FPVItemObject *item = m_current ? m_current->item() : currentObject();
    if (item == nullptr || !item->isPicture()) {
        return;
    }
    if (m_current) {
        m_current->toggleItemCheck(!item->isChecked());
    } else {
        item->setChecked(!item->isChecked());
    }
}

bool FPVThumbnailView::hasCursor() const
{
    return m_currentIndex >= 0 && m_currentIndex < itemCount();
}

FPVItemObject *FPVThumbnailView::currentObject() const
{
    return hasCursor() ? m_list->at(m_currentIndex) : nullptr;
}

bool FPVThumbnailView::currentIsParentEntry() const
{
    const FPVItemObject *item = currentObject();
    return item != nullptr && item->isFolder() && item->fileName() == QLatin1String("..");
}

FPVItemObject *FPVThumbnailView::nextPicture()
{
    return stepToPicture(hasCursor() ? m_currentIndex : -1, 1);
}

FPVItemObject *FPVThumbnailView::prevPicture()
{
    return stepToPicture(hasCursor() ? m_currentIndex : 0, -1);
}

FPVItemObject *FPVThumbnailView::stepToPicture(int from, int step)
{
    const int count = itemCount();
    for (int taken = 1; taken <= count; ++taken) {
        const int index = (from + taken * step + count) % count;
        FPVItemObject *item = m_list->at(index);
        if (item->isPicture()) {
            m_currentIndex = index;
            return item;
        }
    }
    return nullptr;
}

void FPVThumbnailView::setCurrentObject(FPVItemObject *item)
{
    const int index = m_list == nullptr ? -1 : m_list->findRef(item);
    if (index < 0) {
        return;
    }
    FPVThumbnailItem *cell = item->thumbnailItem();
    if (cell == nullptr) {
        showPage(index, index, true);
        return;
    }
    m_currentIndex = index;
    moveCursor(cell);
    Q_EMIT selected(item);
}

void FPVThumbnailView::setCurrentObjectQuiet(FPVItemObject *item)
{
    const int index = m_list == nullptr ? -1 : m_list->findRef(item);
    if (index >= 0) {
        m_topIndex = index;
        m_currentIndex = index;
    }
}

bool FPVThumbnailView::anyChecked() const
{
    return m_list != nullptr
        && std::any_of(m_list->begin(), m_list->end(), [](const FPVItemObject *item) {
               return item->isChecked();
           });
}

/// Puts the cursor on the first cell of the page. False if the page has it, or has no cell.
bool FPVThumbnailView::startCursor()
{
    const bool isOnPage = hasCursor() && m_currentIndex >= m_topIndex
        && m_currentIndex < m_topIndex + grid().visibleCount();
    if (isOnPage || m_topIndex >= itemCount()) {
        return false;
    }
    setCurrentObject(m_list->at(m_topIndex));
    return true;
}

bool FPVThumbnailView::focusNextPrevChild(bool next)
{
    return (currentObject() == nullptr && startCursor()) || QScrollView::focusNextPrevChild(next);
}

void FPVThumbnailView::focusInEvent(QFocusEvent *event)
{
    QScrollView::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        // A slot of selected() may open a dialog, so the change of the focus must be complete.
        QMetaObject::invokeMethod(this, &FPVThumbnailView::startCursor, Qt::QueuedConnection);
    }
    if (m_current) {
        m_current->relayout();
    }
}

void FPVThumbnailView::focusOutEvent(QFocusEvent *event)
{
    QScrollView::focusOutEvent(event);
    if (m_current) {
        m_current->relayout();
    }
}

bool FPVThumbnailView::event(QEvent *event)
{
    if (event->type() != lumi::SwipeEvent::kType) {
        return QScrollView::event(event);
    }
    const bool isToNext = static_cast<lumi::SwipeEvent *>(event)->isToNext();
    event->accept();
    activeBar()->triggerAction(isToNext ? QAbstractSlider::SliderPageStepAdd
                                        : QAbstractSlider::SliderPageStepSub);
    return true;
}

void FPVThumbnailView::wheelEvent(QWheelEvent *event)
{
    QCoreApplication::sendEvent(activeBar(), event);
}
