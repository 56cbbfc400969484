#pragma once

#include <QHeaderView>

namespace oribund
{
class TableWidget;
}

namespace workbench
{

/** The header of a native view, painted as the table itself does. Its edges are dragged, no more. */
class TableHeader final : public QHeaderView
{
public:
    TableHeader(const oribund::TableWidget& table, QWidget* parent);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    const oribund::TableWidget& table_;
};

} // namespace workbench
