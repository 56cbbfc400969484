#pragma once

#include <QStyledItemDelegate>

namespace oribund
{
class TableWidget;
}

namespace workbench
{

/** Paints the cells of a native view as the table itself does. */
class TableCellDelegate final : public QStyledItemDelegate
{
public:
    TableCellDelegate(const oribund::TableWidget& table, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const oribund::TableWidget& table_;
};

} // namespace workbench
