#include "oribund/host/toolkit/lists/TableWidget.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"
#include "oribund/host/toolkit/lists/TableColumnDrag.h"
#include "oribund/host/toolkit/lists/TablePainter.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

TableWidget::TableWidget(const InitArgs& args)
    : Control(args)
    , emptyText_(displayText(args.emptyText))
    , selects_(args.selects)
    , headerShown_(args.headerShown)
{
    applyNaturalSize(args, {12 * UifStd::getRowHeight(), 6 * UifStd::getRowHeight()});
    layout_.setSize(getSize());
    ScrollBar::InitArgs bar;
    bar.palette = args.palette;
    bar.focusable = false; // the table has the keys
    bar_ = static_cast<ScrollBar*>(&addChild(std::make_unique<ScrollBar>(bar)));
    barCallback_.attach(bar_->events());
    placeBar();
}

TableWidget::~TableWidget() = default;

// Contents

void TableWidget::setAdaptor(iTableAdaptor* adaptor)
{
    // The last one may be half destroyed: from here on it is not asked any more.
    adaptorCallback_.detach();
    adaptor_ = nullptr;
    layout_.setRows(0, 1);
    const GlobRef<TableWidget> self(this);
    edit_.cancel();
    if (!self)
        return;
    adaptor_ = adaptor;
    if (adaptor_)
        adaptorCallback_.attach(adaptor_->tableEvents());
    current_ = {};
    refresh();
}

int TableWidget::handleAdaptorEvent(const TableAdaptorEvent& event)
{
    if (event.kind == TableAdaptorEvent::Kind::Gone)
        setAdaptor(nullptr);
    else
        refresh();
    return 0;
}

void TableWidget::refresh()
{
    const RedrawHold hold;
    const GlobRef<TableWidget> self(this);
    readAdaptor();
    placeBar();
    edit_.follow();
    if (!self)
        return;
    if (const XY<int> wanted = adaptor_ ? adaptor_->getSize() : XY<int>(); wanted.x > 0 && wanted.y > 0)
        resize(wanted.x, wanted.y);
    if (self)
        changed(GlobChange::kLook);
}

void TableWidget::readAdaptor()
{
    const XY<int> before = current_.cell();
    columns_ = adaptor_ ? adaptor_->getColumnDefinitions() : std::vector<TableColumn>();
    std::vector<TableLayout::Column> placed;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const int fitting = UifStd::measure(getTitle(static_cast<int>(i)), font()) + 2 * kPadding;
        const int width = columns_[i].width > 0 ? columns_[i].width : fitting;
        placed.push_back({columns_[i].id, width, std::max(columns_[i].minWidth, 2 * kPadding)});
    }
    layout_.setHeaderHeight(headerShown_ && !columns_.empty() ? UifStd::getRowHeight() : 0);
    layout_.setColumns(placed);
    layout_.setRows(adaptor_ && !columns_.empty() ? adaptor_->getNumRows() : 0,
                    adaptor_ ? adaptor_->getRowHeight() : UifStd::getRowHeight());
    if (!adaptor_ || !current_.isSet() || current_.find(columns_, *adaptor_))
        return;
    // What was marked is gone: the mark stays where it was.
    const XY<int> near{std::min(before.x, layout_.getNumColumns() - 1), std::min(before.y, layout_.getNumRows() - 1)};
    if (layout_.isCell(near))
        current_ = TableCellAnchor(near, columns_, *adaptor_);
}

WString TableWidget::getTitle(int column) const
{
    return displayText(columns_[static_cast<std::size_t>(column)].title);
}

TableCell TableWidget::getCell(const XY<int>& cell) const
{
    return showsCells() && layout_.isCell(cell) ? adaptor_->getCellData(cell) : TableCell();
}

bool TableWidget::isEditable(const XY<int>& cell) const
{
    return layout_.isCell(cell) && columns_[static_cast<std::size_t>(cell.x)].editable && getCell(cell).editable;
}

XY<int> TableWidget::editableCellNear(const XY<int>& cell) const
{
    const int columns = layout_.getNumColumns();
    for (int i = 0; i < columns && layout_.isCell(cell); ++i) {
        if (const XY<int> candidate{(cell.x + i) % columns, cell.y}; isEditable(candidate))
            return candidate;
    }
    return TableLayout::kNoCell;
}

bool TableWidget::showsCells() const
{
    return adaptor_ && layout_.getNumRows() > 0 && adaptor_->isVisible();
}

bool TableWidget::hasKeyboard() const
{
    return hasFocus() || edit_.isOpen();
}

WString TableWidget::describe(const XY<int>& cell) const
{
    const WString title = layout_.isCell(cell) ? getTitle(cell.x) : WString();
    const WString row = cell.x > 0 ? getCell({0, cell.y}).text : WString();
    return row.empty() || title.empty() ? title + row : row + L", " + title;
}

// The current cell

void TableWidget::setCurrentCell(const XY<int>& cell)
{
    if (!layout_.isCell(cell)) {
        current_ = {};
        changed(GlobChange::kLook);
        return;
    }
    current_ = TableCellAnchor(cell, columns_, *adaptor_);
    revealRow(cell.y);
}

void TableWidget::revealRow(int row)
{
    if (layout_.scrollTo(row)) {
        placeBar();
        edit_.place();
    }
    changed(GlobChange::kLook);
}

void TableWidget::userSelect(const XY<int>& cell)
{
    if (!canInteract() || !layout_.isCell(cell))
        return;
    const bool moved = cell != current_.cell();
    const GlobRef<TableWidget> self(this);
    setCurrentCell(cell);
    if (self && moved)
        selections_.notify({this, cell});
}

bool TableWidget::userStore(const WString& text, const XY<int>& cell)
{
    return canInteract() && isEditable(cell) && adaptor_->storeFieldText(text, cell);
}

void TableWidget::placeBar()
{
    const Kt::Box<int> box = layout_.scrollBarBox();
    const double all = std::max(1, layout_.getNumRows() * layout_.getRowHeight());
    bar_->setVisible(!box.empty());
    bar_->setPosition(box.topLeft());
    bar_->resize(box.size());
    bar_->setThumb(layout_.getScroll() / all, layout_.bodyBox().height() / all);
    bar_->setStep(layout_.getRowHeight() / all);
}

int TableWidget::handleBar(const ScrollBarEvent& event)
{
    userScroll(static_cast<int>(std::lround(event.position * layout_.getNumRows() * layout_.getRowHeight())));
    return 0;
}

void TableWidget::userScroll(int offset)
{
    if (!layout_.setScroll(offset))
        return;
    const GlobRef<TableWidget> self(this);
    placeBar();
    edit_.place();
    if (self)
        changed(GlobChange::kLook);
}

void TableWidget::userResizeColumn(int column, int width)
{
    if (!layout_.setColumnWidth(column, width))
        return;
    edit_.place();
    changed(GlobChange::kLook);
}

void TableWidget::resize(double width, double height)
{
    const RedrawHold hold;
    const XY<int> old = getSize();
    if (!applySize(width, height))
        return;
    const GlobRef<TableWidget> self(this);
    layout_.setSize(getSize());
    placeBar();
    edit_.place();
    if (!self)
        return;
    changed(GlobChange::kLook);
    tellParentOfResize(old);
}

MouseCursor TableWidget::contextCursor(const XY<int>& local) const
{
    return drag_ || layout_.edgeAt(local) >= 0 ? MouseCursor::ResizeHorizontal : Control::contextCursor(local);
}

UIString TableWidget::tooltip() const
{
    const XY<int> cell = layout_.cellAt(pointer_);
    if (!layout_.isCell(cell))
        return Control::tooltip();
    const WString text = getCell(cell).text;
    const bool cut = UifStd::measure(text, font()) > layout_.getColumnWidth(cell.x) - 2 * kPadding;
    return cut ? UIString(text) : Control::tooltip();
}

// Those who do not see it: the titles, then the cells, row by row

void TableWidget::draw(CanvasRenderer& renderer)
{
    TablePainter(*this, renderer).all();
}

} // namespace oribund
