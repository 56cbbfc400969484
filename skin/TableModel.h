#pragma once

#include <QAbstractTableModel>

namespace oribund
{
class TableWidget;
}

namespace workbench
{

/** The contents of a table as Qt's views and assistive tools read them. Empty once the table is gone. */
class TableModel final : public QAbstractTableModel
{
public:
    TableModel(oribund::TableWidget& table, QObject* parent);

    /** The table must not be called any more. */
    void detach();

    /** Tells the views what has become of the table's contents. */
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    void setRowCount(int rows);

    oribund::TableWidget* table_;
    // What the views have been told.
    int rows_ = 0;
    int columns_ = 0;
    unsigned revision_ = 0;
};

} // namespace workbench
