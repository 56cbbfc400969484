#include "oribund/host/toolkit/lists/TablePainter.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/lists/TableWidget.h"
#include "oribund/host/toolkit/lists/iTableAdaptor.h"

namespace oribund
{

void TablePainter::all()
{
    const Palette& palette = table_.getPalette();
    const Kt::Box<double> edges = CanvasRenderer::toDouble(table_.localBox());
    renderer_.fillRect(edges, palette.field());
    {
        const ClipGuard clip(renderer_, CanvasRenderer::toDouble(table_.layout().bodyBox()));
        rows();
    }
    header();
    renderer_.frameRect(edges, table_.hasKeyboard() ? palette.focus() : lineColour());
}

void TablePainter::rows()
{
    const TableLayout& layout = table_.layout();
    const auto [first, last] = layout.rowsInView();
    if (!table_.showsCells()) {
        emptyState(layout.bodyBox());
        return;
    }
    for (int row = first; row < last; ++row) {
        for (int column = 0; column < layout.getNumColumns(); ++column)
            cell({column, row}, layout.cellBox({column, row}));
    }
}

void TablePainter::cell(const XY<int>& cell, const Kt::Box<int>& box)
{
    if (!table_.showsCells() || !table_.layout().isCell(cell) || box.empty())
        return;
    const Palette& palette = table_.getPalette();
    const TableCell data = table_.getCell(cell);
    const ClipGuard clip(renderer_, CanvasRenderer::toDouble(box));
    renderer_.fillRect(CanvasRenderer::toDouble(box), ground(cell));
    fillEdges(box, cell.x < table_.layout().getNumColumns() - 1);
    const bool marked = isMarked(cell) && table_.hasKeyboard();
    const Colour normal = marked ? palette.accentText() : palette.colour(data.role);
    const Colour ink = table_.canInteract() ? normal : palette.disabledText();
    const Kt::Box<int> inner{box.left + TableWidget::kPadding, box.top, box.right - TableWidget::kPadding,
                             box.bottom - 1};
    if (!inner.empty() && !table_.getAdaptor()->drawField(renderer_, cell, inner, ink))
        renderer_.text(CanvasRenderer::toDouble(inner), data.text, table_.font(), ink,
                       table_.getColumns()[static_cast<std::size_t>(cell.x)].align);
}

void TablePainter::emptyState(const Kt::Box<int>& box)
{
    const int height = UifStd::getRowHeight();
    const int top = box.top + (box.height() - height) / 2;
    const Kt::Box<int> line{box.left + TableWidget::kPadding, top, box.right - TableWidget::kPadding, top + height};
    if (!line.empty())
        renderer_.text(CanvasRenderer::toDouble(line), table_.getEmptyText(), table_.font(),
                       table_.getPalette().disabledText(), TextAlign::Centre);
}

void TablePainter::header()
{
    const TableLayout& layout = table_.layout();
    const Kt::Box<int> header = layout.headerBox();
    if (header.empty())
        return;
    const ClipGuard clip(renderer_, CanvasRenderer::toDouble(header));
    for (int column = 0; column < layout.getNumColumns(); ++column)
        headerCell(column, layout.headerCellBox(column));
}

void TablePainter::headerCell(int column, const Kt::Box<int>& box)
{
    const Palette& palette = table_.getPalette();
    renderer_.fillRect(CanvasRenderer::toDouble(box), palette.window());
    fillEdges(box, column < table_.layout().getNumColumns() - 1);
    const Kt::Box<int> inner = box.inset(TableWidget::kPadding, 0);
    if (!inner.empty())
        renderer_.text(CanvasRenderer::toDouble(inner), table_.getTitle(column), table_.font(), palette.headingText(),
                       table_.getColumns()[static_cast<std::size_t>(column)].align);
}

void TablePainter::fillEdges(const Kt::Box<int>& box, bool right)
{
    renderer_.fillRect(CanvasRenderer::toDouble(Kt::Box<int>{box.left, box.bottom - 1, box.right, box.bottom}),
                       lineColour());
    if (right)
        renderer_.fillRect(CanvasRenderer::toDouble(Kt::Box<int>{box.right - 1, box.top, box.right, box.bottom}),
                           lineColour());
}

bool TablePainter::isMarked(const XY<int>& cell) const
{
    const XY<int>& current = table_.getCurrentCell();
    return cell.y == current.y && (table_.selects() == TableWidget::Selects::Rows || cell.x == current.x);
}

Colour TablePainter::ground(const XY<int>& cell) const
{
    const Palette& palette = table_.getPalette();
    // Behind the entry nothing is to shine through.
    if (!isMarked(cell) || table_.edit().cell() == cell)
        return palette.field();
    // A table without the keyboard still tells which of its cells is meant, but not as loudly.
    return table_.hasKeyboard() ? palette.accent() : palette.field().mix(palette.accent(), 0.35);
}

Colour TablePainter::lineColour() const
{
    const Palette& palette = table_.getPalette();
    return palette.field().mix(palette.border(), 0.5);
}

} // namespace oribund
