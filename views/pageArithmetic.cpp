// SPDX-License-Identifier: MIT
#include "views/pageArithmetic.h"

#include <Qt>

#include <algorithm>

namespace {

/// Pixels of a cell beside the picture: its frame, and the name below it.
constexpr int kFrame = 4;
constexpr int kFrameAndName = 38;

struct KeyAction
{
    int key;
    lumi::ViewAction action;
    lumi::ViewAction steppedAction;
};

using enum lumi::ViewAction;

constexpr KeyAction kKeyActions[] = {
    {Qt::Key_Space, ToggleCheck, ToggleCheck}, //
    {Qt::Key_Backspace, FolderUp, FolderUp},   //
    {Qt::Key_Return, Open, Open},              //
    {Qt::Key_Enter, Open, Open},               //
    {Qt::Key_Left, Left, Left},                //
    {Qt::Key_Right, Right, Right},             //
    {Qt::Key_Up, Up, Right},                   //
    {Qt::Key_Down, Down, Left},                //
};

std::optional<int> moveTarget(lumi::ViewAction action, int columns, int index)
{
    switch (action) {
    case Up:
        return columns == 1 ? std::nullopt : std::optional<int>(index - columns);
    case Down:
        return columns == 1 ? std::nullopt : std::optional<int>(index + columns);
    case Left:
        return index - 1;
    case Right:
        return index + 1;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<lumi::CellSizes> lumi::cellSizes(int columns, int rows, bool showName, QSize bars)
{
    if (columns <= 0 || rows <= 0) {
        return std::nullopt;
    }
    const int width = kPageWidth - bars.width();
    const int height = pageBoxHeight(rows) - bars.height();
    const int beside = showName ? kFrameAndName : kFrame;
    return CellSizes{QSize((width - kFrame * columns) / columns, (height - beside * rows) / rows),
                     QSize(width / columns, height / rows)};
}

int lumi::rowsInAll(int count, int columns)
{
    return (count + columns - 1) / columns;
}

int lumi::pageTop(const PageGrid &grid, int count, int present, int top, int index)
{
    if (grid.visibleCount() >= count) {
        return 0;
    }
    int result = present;
    if (top != -1) {
        result = top - top % grid.columns;
    } else if (index >= 0) {
        result = index / grid.visibleCount() * grid.visibleCount();
    }
    const int rows = rowsInAll(count, grid.columns);
    if (!grid.horizontal && count < result + grid.visibleCount()) {
        // The last page is full and ends on the last row.
        result = grid.columns * (rows - grid.rows);
    }
    if (result >= count) {
        result = grid.columns * (rows - 1);
    }
    return std::max(0, result);
}

lumi::BarRange lumi::barRange(const PageGrid &grid, int count, int top)
{
    if (grid.visibleCount() >= count) {
        return {};
    }
    const int rows = rowsInAll(count, grid.columns);
    const int value = top / grid.columns + 1;
    if (grid.horizontal) {
        return {1, rows, 1, value};
    }
    return {1, rows - grid.rows + 1, grid.rows, value};
}

int lumi::topForBar(int columns, int value)
{
    return value > 0 ? columns * (value - 1) : 0;
}

int lumi::topOneLineOn(int columns, int count, int top)
{
    return top + columns < count ? top + columns : top;
}

int lumi::topOneLineBack(int columns, int top)
{
    return top - columns >= 0 ? top - columns : top;
}

int lumi::topOnePageOn(const PageGrid &grid, int count, int top)
{
    for (int row = 0; row < grid.rows; ++row) {
        top = topOneLineOn(grid.columns, count, top);
    }
    return top;
}

int lumi::topOnePageBack(const PageGrid &grid, int top)
{
    if (top - grid.columns < 0) {
        return top;
    }
    for (int row = 0; row < grid.rows; ++row) {
        // The test uses rows, the step uses columns: the pages of a list rely on it. From a top
        // that is not a multiple of columns the last step may lead below zero.
        top = top - grid.rows < 0 ? 0 : top - grid.columns;
    }
    return std::max(0, top);
}

lumi::ViewAction lumi::viewAction(int key, bool stepsOnly)
{
    for (const KeyAction &row : kKeyActions) {
        if (row.key == key) {
            return stepsOnly ? row.steppedAction : row.action;
        }
    }
    return None;
}

lumi::CursorMove lumi::cursorMove(ViewAction action, const PageGrid &grid, int count, int top,
                                  int index)
{
    const std::optional<int> target = moveTarget(action, grid.columns, index);
    if (index < 0 || index >= count || !target || *target < 0 || *target >= count) {
        return {};
    }
    if (*target < top) {
        const int rowStart = *target - *target % grid.columns;
        return {CursorMove::OtherPage, *target, top < grid.columns ? 0 : rowStart};
    }
    if (*target >= top + grid.visibleCount()) {
        return {CursorMove::OtherPage, *target, top + grid.columns};
    }
    return {CursorMove::OnPage, *target, top};
}
