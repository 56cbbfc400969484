#include "skin/TableHeader.h"

#include "skin/QPainterRenderer.h"
#include "skin/QtConversions.h"

#include "oribund/host/toolkit/lists/TablePainter.h"

namespace workbench
{

TableHeader::TableHeader(const oribund::TableWidget& table, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
    , table_(table)
{
    setMinimumSectionSize(1);
    setSectionsClickable(false);
    setHighlightSections(false);
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    QPainterRenderer renderer(*painter);
    oribund::TablePainter(table_, renderer).headerCell(section, fromQt(rect));
}

} // namespace workbench
