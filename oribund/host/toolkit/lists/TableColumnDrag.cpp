#include "oribund/host/toolkit/lists/TableColumnDrag.h"

#include "oribund/host/toolkit/lists/TableWidget.h"

namespace oribund
{

TableColumnDrag::TableColumnDrag(TableWidget& table, int column, int x)
    : table_(table)
    , column_(column)
    , width_(table.layout().getColumnWidth(column))
    , x_(x)
{
}

void TableColumnDrag::motion(int x)
{
    table_.userResizeColumn(column_, width_ + x - x_);
}

void TableColumnDrag::abort()
{
    table_.userResizeColumn(column_, width_);
}

} // namespace oribund
