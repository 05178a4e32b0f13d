// SPDX-License-Identifier: MIT
// The arithmetic of a paged thumbnail view: cell sizes, the first item of a page, the range of the
// bar, and the targets of lines, pages and cursor keys.
// A page is laid out in a box of fixed size. So the number of cells, and the memory they use, does
// not grow with the window.
#pragma once

#include <QSize>

#include <optional>

namespace lumi {

/// Width of the box that a page is laid out in, its scroll bar included, in pixels.
inline constexpr int kPageWidth = 541;
/// Height of the box, and its height with only one row.
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

/// The cells of a page and the direction in which it scrolls.
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

/// The target of a cursor move.
struct CursorMove
{
    enum Kind { Nothing, OnPage, OtherPage };

    Kind kind = Nothing;
    int target = -1;
    int top = 0; ///< of the other page
};

/// The actions of the keys. The values are those of FPVThumbnailView::action().
enum class ViewAction : int { Up, Down, Left, Right, ToggleCheck, Open, FolderUp, None };

/// bars: width of the vertical and height of the horizontal bar, 0 for a bar that is not in use.
/// Null without columns or rows.
[[nodiscard]] std::optional<CellSizes> cellSizes(int columns, int rows, bool showName, QSize bars);

/// Number of rows of the whole list.
[[nodiscard]] int rowsInAll(int count, int columns);

/// First item of the page of FPVThumbnailView::showPage(top, index). present: first item of the
/// present page. At least 0 and, unless the list is empty, less than count.
[[nodiscard]] int pageTop(const PageGrid &grid, int count, int present, int top, int index);

/// All zero if the whole list is on the page.
[[nodiscard]] BarRange barRange(const PageGrid &grid, int count, int top);
/// First item of the page for a value of the bar.
[[nodiscard]] int topForBar(int columns, int value);

[[nodiscard]] int topOneLineOn(int columns, int count, int top);
[[nodiscard]] int topOneLineBack(int columns, int top);
[[nodiscard]] int topOnePageOn(const PageGrid &grid, int count, int top);
[[nodiscard]] int topOnePageBack(const PageGrid &grid, int top);

/// stepsOnly: Up and Down act like Right and Left, as when the keyboard is folded away.
[[nodiscard]] ViewAction viewAction(int key, bool stepsOnly);

/// The move of Up, Down, Left or Right from the item `index`. Other actions give Nothing.
[[nodiscard]] CursorMove cursorMove(ViewAction action, const PageGrid &grid, int count, int top,
                                    int index);

} // namespace lumi
