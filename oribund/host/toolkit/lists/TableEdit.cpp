#include "oribund/host/toolkit/lists/TableEdit.h"

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"
#include "oribund/host/toolkit/lists/TableWidget.h"

#include <algorithm>
#include <utility>

namespace oribund
{

namespace
{

/** What a native entry can take. */
constexpr std::size_t kMaxLength = 32767;

} // namespace

TableEdit::TableEdit(TableWidget& table)
    : table_(table)
{
}

bool TableEdit::begin(const XY<int>& cell)
{
    const GlobRef<TableWidget> self(&table_);
    if (isOpen() && (!commit() || !self))
        return false;
    if (!table_.isShown() || !table_.canInteract() || !table_.isEditable(cell))
        return false;
    table_.userSelect(cell);
    // Who heard of the selection may have changed everything.
    if (!self || isOpen() || table_.getCurrentCell() != cell || !table_.isEditable(cell))
        return false;
    open(cell);
    return self && isOpen();
}

void TableEdit::open(const XY<int>& cell)
{
    TextBox::InitArgs args;
    args.palette = table_.getPalette();
    args.text = table_.getCell(cell).text;
    args.align = table_.getColumns()[static_cast<std::size_t>(cell.x)].align;
    args.maxLength = kMaxLength;
    auto made = std::make_unique<TableCellBox>(args, *this);
    made->setFont(table_.font());
    made->setAccessibleName(table_.describe(cell));
    cell_ = TableCellAnchor(cell, table_.getColumns(), *table_.getAdaptor());
    const GlobRef<TableCellBox> box(made.get());
    box_ = box;
    table_.addChild(std::move(made));
    place();
    if (box && !box->takeFocus())
        close();
    else if (box)
        table_.changed(GlobChange::kLook);
}

bool TableEdit::commit()
{
    const GlobRef<TableWidget> self(&table_);
    const GlobRef<TableCellBox> box = box_;
    if (!box)
        return true;
    const WString text = box->getShownText();
    const bool accepted = box->userCommit(text);
    if (!self || !isOpen())
        return accepted;
    if (accepted)
        close();
    else if (box)
        box->userEdit(text);
    return accepted;
}

void TableEdit::cancel()
{
    if (box_)
        box_->userCancel();
    close();
}

void TableEdit::close()
{
    const GlobRef<TableCellBox> box = std::exchange(box_, {});
    cell_ = {};
    if (!box)
        return;
    const GlobRef<TableWidget> self(&table_);
    if (box->hasFocus())
        table_.takeFocus();
    if (self && box)
        table_.removeChild(*box);
    if (self)
        table_.changed(GlobChange::kLook);
}

bool TableEdit::store(const TableCellBox& box, const WString& text)
{
    const XY<int> at = cell();
    return box_ == &box && table_.isEditable(at) && table_.getAdaptor()->storeFieldText(text, at);
}

void TableEdit::leave(const TableCellBox& box)
{
    if (box_ == &box)
        close();
}

bool TableEdit::usesKey(const Event& press) const
{
    const bool ends = press.key == Key::Enter || press.key == Key::Escape || press.key == Key::Tab;
    return ends && isOpen() && press.isPlainKeyPress();
}

bool TableEdit::userKey(const Event& event)
{
    if (!usesKey(event))
        return false;
    switch (event.key) {
    case Key::Enter:
        commitAndStep(event.has(Event::kShift) ? -1 : 1);
        return true;
    case Key::Escape:
        cancel();
        return true;
    case Key::Tab:
        commitAndGoOn(!event.has(Event::kShift));
        return true;
    default:
        return false;
    }
}

void TableEdit::commitAndStep(int rows)
{
    const GlobRef<TableWidget> self(&table_);
    if (!commit() || !self)
        return;
    const XY<int>& current = table_.getCurrentCell();
    if (const XY<int> next{current.x, current.y + rows}; table_.layout().isCell(next))
        table_.userSelect(next);
}

void TableEdit::commitAndGoOn(bool forward)
{
    const GlobRef<TableWidget> self(&table_);
    if (!commit() || !self)
        return;
    // Past the last cell the keyboard leaves the table or, as the last stop there is, stays with it.
    const XY<int> next = nextEditable(table_.getCurrentCell(), forward);
    if (next != TableLayout::kNoCell)
        begin(next);
    else if (EventRouter* router = EventRouter::find(table_.canvas()))
        router->moveByTab(forward);
}

XY<int> TableEdit::nextEditable(XY<int> from, bool forward) const
{
    const int columns = table_.layout().getNumColumns();
    while (table_.layout().isCell(from)) {
        from.x += forward ? 1 : -1;
        if (from.x < 0 || from.x >= columns)
            from = {forward ? 0 : columns - 1, from.y + (forward ? 1 : -1)};
        if (table_.isEditable(from))
            return from;
    }
    return TableLayout::kNoCell;
}

void TableEdit::follow()
{
    if (!isOpen())
        return;
    const iTableAdaptor* adaptor = table_.getAdaptor();
    if (!adaptor || !cell_.find(table_.getColumns(), *adaptor) || !table_.isEditable(cell())) {
        cancel();
        return;
    }
    box_->setText(table_.getCell(cell()).text);
    place();
}

void TableEdit::place()
{
    if (!isOpen())
        return;
    const Kt::Box<int> box = table_.layout().cellBox(cell());
    const Kt::Box<int> body = table_.layout().bodyBox();
    if (box.top >= body.top && box.top < body.bottom && !body.empty()) {
        // Beside the line on the left, so that the text stays where it is seen in the cell.
        const int left = box.left + 1;
        box_->setPosition({left, box.top});
        box_->resize(std::min(box.right, body.right) - left, box.height());
        return;
    }
    const GlobRef<TableWidget> self(&table_);
    if (!commit() && self)
        cancel();
}

} // namespace oribund
