// SPDX-License-Identifier: MIT
// The arithmetic of a paged thumbnail view: cell sizes, which item a page begins with, what
// the bar shows, where lines, pages and cursor keys lead. Plain values in and out.
// A page is laid out in a box of fixed size, whatever the window: the number of cells, and so
// the memory in use, never grows with the screen.
#pragma once

#include <QSize>

#include <optional>

namespace lumi {

/// Width of the box that a page is laid out in, its scroll bar included, in pixels.
inline constexpr int kPageWidth = 541;
/// Height of the box, and its height when there is but one row.
inline constexpr int kPageHeight = 314;
inline constexpr int kStripHeight = 109;

[[nodiscard]] constexpr int pageBoxHeight(int rows)
{
    return rows == 1 ? kStripHeight : kPageHeight;
}

struct CellSizes
{
    QSize image; ///< the box into which thumbnails are fitted
    QSize pitch; ///< one cell
};

/// What a display mode makes of a list: the cells of a page and which way it scrolls.
struct PageGrid
{
    int columns = 0;
    int rows = 0;
    bool horizontal = false;

    [[nodiscard]] constexpr int visibleCount() const { return columns * rows; }
};

struct BarRange
{
    int minimum = 0;
    int maximum = 0;
    int pageStep = 1;
    int value = 0;
};

/// Where a cursor move leads.
struct CursorMove
{
    enum Kind { Nothing, OnPage, OtherPage };

    Kind kind = Nothing;
    int target = -1;
    int top = 0; ///< of the other page
};

/// What a view does on a key, with the numbers that FPVThumbnailView::action() takes.
enum class ViewAction : int { Up, Down, Left, Right, ToggleCheck, Open, FolderUp, None };

/// bars: width of the vertical bar and height of the horizontal one, 0 for one that is not in
/// use. Nothing without columns or rows.
[[nodiscard]] std::optional<CellSizes> cellSizes(int columns, int rows, bool showName, QSize bars);

/// Rows of the whole list.
[[nodiscard]] int rowsInAll(int count, int columns);

/// First item of the page that FPVThumbnailView::showPage(top, index) shows while the page
/// begins with `present`; 0 or more and, in a list that isn't empty, less than count.
[[nodiscard]] int pageTop(const PageGrid &grid, int count, int present, int top, int index);

/// All zero if the page holds the whole list.
[[nodiscard]] BarRange barRange(const PageGrid &grid, int count, int top);
/// First item of the page for a value of the bar.
[[nodiscard]] int topForBar(int columns, int value);

[[nodiscard]] int topOneLineOn(int columns, int count, int top);
[[nodiscard]] int topOneLineBack(int columns, int top);
[[nodiscard]] int topOnePageOn(const PageGrid &grid, int count, int top);
[[nodiscard]] int topOnePageBack(const PageGrid &grid, int top);

/// stepsOnly: Up and Down act like Right and Left, as on a keyboard that is folded away.
[[nodiscard]] ViewAction viewAction(int key, bool stepsOnly);

/// Where Up, Down, Left or Right lead from the item `index`; any other action leads nowhere.
[[nodiscard]] CursorMove cursorMove(ViewAction action, const PageGrid &grid, int count, int top,
                                    int index);

} // namespace lumi
