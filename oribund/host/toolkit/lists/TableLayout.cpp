#include "oribund/host/toolkit/lists/TableLayout.h"

#include "oribund/host/canvas/UifStd.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace oribund
{

namespace
{

/** How far from an edge of a column a press still takes hold of it. */
constexpr int kEdgeReach = 3;

} // namespace

void TableLayout::setColumns(const std::vector<Column>& columns)
{
    std::vector<Placed> placed;
    placed.reserve(columns.size());
    for (const Column& column : columns) {
        Placed next;
        static_cast<Column&>(next) = column;
        next.minWidth = std::max(next.minWidth, 1);
        const auto known = std::find_if(columns_.begin(), columns_.end(),
                                        [&column](const Placed& before) { return before.id == column.id; });
        next.chosen = known == columns_.end() ? 0 : known->chosen;
        placed.push_back(next);
    }
    columns_ = std::move(placed);
    place();
}

void TableLayout::setRows(int count, int height)
{
    rowHeight_ = std::max(height, 1);
    // No screen, and no scroll bar, reaches further.
    rows_ = std::clamp(count, 0, std::numeric_limits<int>::max() / 2 / rowHeight_);
    place();
}

void TableLayout::setSize(const XY<int>& size)
{
    size_ = size;
    place();
}

void TableLayout::setHeaderHeight(int height)
{
    headerHeight_ = std::max(height, 0);
    place();
}

void TableLayout::place()
{
    setScroll(scroll_);
    if (columns_.empty())
        return;
    const Placed& last = columns_.back();
    int rest = bodyBox().width();
    for (Placed& column : columns_) {
        column.actual = std::max(column.chosen > 0 ? column.chosen : column.width, column.minWidth);
        rest -= &column == &last ? 0 : column.actual;
    }
    // Where the last one would have too little, those before it give up what they can, the nearest first.
    for (auto column = columns_.rbegin() + 1; column != columns_.rend() && rest < last.minWidth; ++column) {
        const int given = std::min(last.minWidth - rest, column->actual - column->minWidth);
        column->actual -= given;
        rest += given;
    }
    columns_.back().actual = std::max(rest, last.minWidth);
    int left = kFrame;
    for (Placed& column : columns_) {
        column.left = left;
        left += column.actual;
    }
}

bool TableLayout::setColumnWidth(int column, int width)
{
    if (column < 0 || column >= getNumColumns() - 1)
        return false;
    int room = bodyBox().right - columns_[static_cast<std::size_t>(column)].left;
    for (auto later = columns_.begin() + column + 1; later != columns_.end(); ++later)
        room -= &*later == &columns_.back() ? later->minWidth : later->actual;
    Placed& changed = columns_[static_cast<std::size_t>(column)];
    const int taken = std::max(std::min(width, room), changed.minWidth);
    if (taken == changed.actual)
        return false;
    changed.chosen = taken;
    place();
    return true;
}

int TableLayout::getPage() const
{
    return std::max(bodyBox().height() / rowHeight_, 1);
}

bool TableLayout::isCell(const XY<int>& cell) const
{
    return cell.x >= 0 && cell.x < getNumColumns() && cell.y >= 0 && cell.y < rows_;
}

bool TableLayout::overflows() const
{
    return rows_ * rowHeight_ > size_.y - 2 * kFrame - headerHeight_;
}

Kt::Box<int> TableLayout::headerBox() const
{
    const Kt::Box<int> body = bodyBox();
    return {body.left, kFrame, body.right, std::min(kFrame + headerHeight_, body.bottom)};
}

Kt::Box<int> TableLayout::headerCellBox(int column) const
{
    const Placed& placed = columns_[static_cast<std::size_t>(column)];
    const Kt::Box<int> header = headerBox();
    return {placed.left, header.top, placed.left + placed.actual, header.bottom};
}

Kt::Box<int> TableLayout::bodyBox() const
{
    const int bar = overflows() ? UifStd::getScrollBarWidth() : 0;
    const int bottom = std::max(size_.y - kFrame, kFrame);
    return {kFrame, std::min(kFrame + headerHeight_, bottom), std::max(size_.x - kFrame - bar, kFrame), bottom};
}

Kt::Box<int> TableLayout::scrollBarBox() const
{
    const Kt::Box<int> body = bodyBox();
    return {body.right, kFrame, overflows() ? std::max(size_.x - kFrame, body.right) : body.right, body.bottom};
}

Kt::Box<int> TableLayout::cellBox(const XY<int>& cell) const
{
    const Placed& placed = columns_[static_cast<std::size_t>(cell.x)];
    const int top = bodyBox().top + cell.y * rowHeight_ - scroll_;
    return {placed.left, top, placed.left + placed.actual, top + rowHeight_};
}

XY<int> TableLayout::cellAt(const XY<int>& point) const
{
    const Kt::Box<int> body = bodyBox();
    if (!body.contains(point))
        return kNoCell;
    const int row = (point.y - body.top + scroll_) / rowHeight_;
    const auto column = std::find_if(columns_.begin(), columns_.end(),
                                     [&](const Placed& placed) { return point.x < placed.left + placed.actual; });
    const XY<int> cell{static_cast<int>(column - columns_.begin()), row};
    return isCell(cell) ? cell : kNoCell;
}

int TableLayout::edgeAt(const XY<int>& point) const
{
    if (!headerBox().contains(point))
        return -1;
    // Backwards: of columns that are all but closed the last one can be opened again.
    for (int column = getNumColumns() - 2; column >= 0; --column) {
        const Placed& placed = columns_[static_cast<std::size_t>(column)];
        if (std::abs(point.x - (placed.left + placed.actual)) <= kEdgeReach)
            return column;
    }
    return -1;
}

std::pair<int, int> TableLayout::rowsInView() const
{
    const int height = bodyBox().height();
    if (height <= 0)
        return {0, 0};
    const int first = scroll_ / rowHeight_;
    return {std::min(first, rows_), std::min((scroll_ + height + rowHeight_ - 1) / rowHeight_, rows_)};
}

int TableLayout::getMaxScroll() const
{
    return std::max(rows_ * rowHeight_ - bodyBox().height(), 0);
}

bool TableLayout::setScroll(int offset)
{
    const int taken = std::clamp(offset, 0, getMaxScroll());
    return std::exchange(scroll_, taken) != taken;
}

bool TableLayout::scrollTo(int row)
{
    const int top = row * rowHeight_;
    const int height = bodyBox().height();
    if (top < scroll_ || rowHeight_ > height)
        return setScroll(top);
    return top + rowHeight_ > scroll_ + height && setScroll(top + rowHeight_ - height);
}

} // namespace oribund
