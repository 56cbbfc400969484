#include "oribund/host/toolkit/lists/TableCellAnchor.h"

#include "oribund/host/toolkit/lists/iTableAdaptor.h"

#include <algorithm>

namespace oribund
{

TableCellAnchor::TableCellAnchor(const XY<int>& cell, const std::vector<TableColumn>& columns,
                                 const iTableAdaptor& adaptor)
    : cell_(cell)
    , column_(columns[static_cast<std::size_t>(cell.x)].id)
    , row_(adaptor.getRowId(cell.y))
{
}

bool TableCellAnchor::find(const std::vector<TableColumn>& columns, const iTableAdaptor& adaptor)
{
    const auto column = std::find_if(columns.begin(), columns.end(),
                                     [this](const TableColumn& candidate) { return candidate.id == column_; });
    const int row = isSet() && column != columns.end() ? findRow(adaptor) : -1;
    cell_ = row < 0 ? TableLayout::kNoCell : XY<int>{static_cast<int>(column - columns.begin()), row};
    return isSet();
}

int TableCellAnchor::findRow(const iTableAdaptor& adaptor) const
{
    const int rows = adaptor.getNumRows();
    if (cell_.y < rows && adaptor.getRowId(cell_.y) == row_)
        return cell_.y;
    for (int row = 0; row_.valid() && row < rows; ++row) {
        if (adaptor.getRowId(row) == row_)
            return row;
    }
    return -1;
}

} // namespace oribund
