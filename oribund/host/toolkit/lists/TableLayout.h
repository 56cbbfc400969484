#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"

#include <utility>
#include <vector>

namespace oribund
{

/**
 * Where the parts of a table are: plain geometry. A frame of one pixel, a header row, below it the rows, of which those
 * from the scroll offset on are in view, and on the right a scroll bar when there are more. Logical pixels, in the
 * table's coordinates.
 */
class ORIBUND_API TableLayout
{
public:
    /** What stands for "no cell". */
    static constexpr XY<int> kNoCell{-1, -1};
    static constexpr int kFrame = 1;

    struct Column {
        String id;
        int width = 0; ///< asked for, until the user gives it another
        int minWidth = 0;
    };

    /** A column whose id was there before keeps the width that the user has given it. */
    void setColumns(const std::vector<Column>& columns);
    void setRows(int count, int height);
    void setSize(const XY<int>& size);
    /** 0 for no header. */
    void setHeaderHeight(int height);

    int getNumColumns() const { return static_cast<int>(columns_.size()); }

    int getNumRows() const { return rows_; }

    int getRowHeight() const { return rowHeight_; }

    int getHeaderHeight() const { return headerHeight_; }

    /** Rows that are in view whole; at least 1. */
    int getPage() const;

    bool isCell(const XY<int>& cell) const;

    /** Gives a column another width, not below its minimum nor so wide that a later one has less than its own. The
        last column has no width of its own. False when nothing comes of it. */
    bool setColumnWidth(int column, int width);

    int getColumnWidth(int column) const { return columns_[static_cast<std::size_t>(column)].actual; }

    Kt::Box<int> headerBox() const;
    Kt::Box<int> headerCellBox(int column) const;
    /** Where the rows are seen. */
    Kt::Box<int> bodyBox() const;
    /** Empty when all rows are in view. */
    Kt::Box<int> scrollBarBox() const;
    /** Of a cell that exists, whether in view or not. */
    Kt::Box<int> cellBox(const XY<int>& cell) const;

    /** The cell at a point; kNoCell when there is none. */
    XY<int> cellAt(const XY<int>& point) const;

    /** The column whose right edge can be dragged at a point of the header; -1 for none. */
    int edgeAt(const XY<int>& point) const;

    /** The first row that is in view, if only in part, and the one after the last. */
    std::pair<int, int> rowsInView() const;

    int getScroll() const { return scroll_; }

    int getMaxScroll() const;

    /** Clamped; false when that is where it is. */
    bool setScroll(int offset);

    /** As little as brings a row into view whole; false when it is. */
    bool scrollTo(int row);

private:
    struct Placed : Column {
        int chosen = 0; ///< by the user; 0 for not yet
        int left = 0;
        int actual = 0;
    };

    void place();
    bool overflows() const;

    std::vector<Placed> columns_;
    XY<int> size_;
    int rows_ = 0;
    int rowHeight_ = 1;
    int headerHeight_ = 0;
    int scroll_ = 0;
};

} // namespace oribund
