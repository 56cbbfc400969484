#include "skin/TableCellDelegate.h"

#include "skin/QPainterRenderer.h"
#include "skin/QtConversions.h"

#include "oribund/host/toolkit/lists/TablePainter.h"

namespace workbench
{

TableCellDelegate::TableCellDelegate(const oribund::TableWidget& table, QObject* parent)
    : QStyledItemDelegate(parent)
    , table_(table)
{
}

void TableCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QPainterRenderer renderer(*painter);
    oribund::TablePainter(table_, renderer).cell({index.column(), index.row()}, fromQt(option.rect));
}

} // namespace workbench
