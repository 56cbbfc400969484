#include "skin/TableModel.h"

#include "skin/QtConversions.h"

#include "oribund/host/toolkit/lists/TableWidget.h"

namespace workbench
{

namespace
{

oribund::XY<int> cellOf(const QModelIndex& index)
{
    return {index.column(), index.row()};
}

} // namespace

TableModel::TableModel(oribund::TableWidget& table, QObject* parent)
    : QAbstractTableModel(parent)
    , table_(&table)
{
}

void TableModel::detach()
{
    beginResetModel();
    table_ = nullptr;
    rows_ = columns_ = 0;
    endResetModel();
}

void TableModel::refresh()
{
    if (!table_ || revision_ == table_->getRevision())
        return;
    revision_ = table_->getRevision();
    const oribund::TableLayout& layout = table_->layout();
    if (columns_ != layout.getNumColumns()) {
        beginResetModel();
        columns_ = layout.getNumColumns();
        rows_ = layout.getNumRows();
        endResetModel();
        return;
    }
    setRowCount(layout.getNumRows());
    if (rows_ > 0)
        emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
    if (columns_ > 0)
        emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

void TableModel::setRowCount(int rows)
{
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    } else if (rows < rows_) {
        beginRemoveRows({}, rows, rows_ - 1);
        rows_ = rows;
        endRemoveRows();
    }
}

int TableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows_;
}

int TableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns_;
}

QVariant TableModel::data(const QModelIndex& index, int role) const
{
    if (!table_ || !index.isValid())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::AccessibleTextRole)
        return toQt(table_->getCell(cellOf(index)).text);
    if (role == Qt::AccessibleDescriptionRole)
        return toQt(table_->describe(cellOf(index)));
    return {};
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!table_ || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole))
        return {};
    if (orientation == Qt::Horizontal && section < table_->layout().getNumColumns())
        return toQt(table_->getTitle(section));
    // A row is called what its first cell says.
    return orientation == Qt::Vertical ? QVariant(toQt(table_->getCell({0, section}).text)) : QVariant();
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const
{
    if (!table_ || !index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return table_->isEditable(cellOf(index)) ? usual | Qt::ItemIsEditable : usual;
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    return table_ && index.isValid() && role == Qt::EditRole &&
           table_->userStore(fromQt(value.toString()), cellOf(index));
}

} // namespace workbench
