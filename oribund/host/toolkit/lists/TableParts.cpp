// What a table is to a screen reader: its titles and cells are parts, in reading order.

#include "oribund/host/toolkit/lists/TableWidget.h"

namespace oribund
{

void TableWidget::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Table;
    if (!showsCells())
        description.value = emptyText_;
}

int TableWidget::titleCount() const
{
    return layout_.getHeaderHeight() > 0 ? layout_.getNumColumns() : 0;
}

int TableWidget::accessiblePartCount() const
{
    return titleCount() + (showsCells() ? layout_.getNumRows() * layout_.getNumColumns() : 0);
}

int TableWidget::partOf(const XY<int>& cell) const
{
    return showsCells() && layout_.isCell(cell) ? titleCount() + cell.y * layout_.getNumColumns() + cell.x : kNoPart;
}

XY<int> TableWidget::cellOf(int part) const
{
    const int index = part - titleCount();
    return index < 0 || index >= accessiblePartCount() - titleCount()
               ? TableLayout::kNoCell
               : XY<int>{index % layout_.getNumColumns(), index / layout_.getNumColumns()};
}

void TableWidget::describePart(int part, AccessibleDescription& description) const
{
    if (part < titleCount()) {
        description.role = AccessibleRole::ColumnHeader;
        description.name = UIString(getTitle(part));
        description.box = layout_.headerCellBox(part);
        description.cell.x = part;
        return;
    }
    const XY<int> at = cellOf(part);
    const TableCell data = getCell(at);
    description.role = AccessibleRole::Cell;
    description.name = UIString(data.text);
    description.help = UIString(describe(at));
    description.value = data.text;
    description.box = layout_.cellBox(at);
    description.visible =
        description.box.bottom > layout_.bodyBox().top && description.box.top < layout_.bodyBox().bottom;
    description.cell = at;
    description.action = AccessibleAction::Press;
    description.editable = isEditable(at);
    description.readOnly = !description.editable;
    description.selectable = true;
    description.selected = at.y == current_.cell().y && (selects_ == Selects::Rows || at.x == current_.cell().x);
    description.focusable = true;
    description.focused = hasFocus() && at == current_.cell();
}

int TableWidget::accessiblePartAt(const XY<int>& local) const
{
    for (int column = 0; column < titleCount(); ++column) {
        if (layout_.headerCellBox(column).contains(local))
            return column;
    }
    return partOf(layout_.cellAt(local));
}

int TableWidget::currentAccessiblePart() const
{
    return partOf(current_.cell());
}

bool TableWidget::accessibleActivate(int part)
{
    const XY<int> at = cellOf(part);
    if (!layout_.isCell(at))
        return false;
    const GlobRef<TableWidget> self(this);
    userSelect(at);
    if (self && isEditable(at))
        edit_.begin(at);
    return true;
}

bool TableWidget::accessibleSetText(const WString& text, int part)
{
    return userStore(text, cellOf(part));
}

// Look

} // namespace oribund
