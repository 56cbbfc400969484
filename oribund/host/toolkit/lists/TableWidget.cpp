#include "oribund/host/toolkit/lists/TableWidget.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobPeer.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"
#include "oribund/host/toolkit/lists/TableColumnDrag.h"
#include "oribund/host/toolkit/lists/TablePainter.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

constexpr int kRowsPerNotch = 3;

} // namespace

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
        changed(PeerChange::kLook);
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
        changed(PeerChange::kLook);
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
    changed(PeerChange::kLook);
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

bool TableWidget::moves(Key key) const
{
    switch (key) {
    case Key::Up:
    case Key::Down:
    case Key::PageUp:
    case Key::PageDown:
    case Key::Home:
    case Key::End:
        return layout_.getNumRows() > 0;
    case Key::Left:
    case Key::Right:
        return layout_.getNumRows() > 0 && selects_ == Selects::Cells;
    default:
        return false;
    }
}

bool TableWidget::move(Key key)
{
    if (!moves(key))
        return false;
    XY<int> to = getCurrentCell();
    switch (key) {
    case Key::Up:
    case Key::Down:
        to.y += key == Key::Up ? -1 : 1;
        break;
    case Key::PageUp:
    case Key::PageDown:
        to.y += key == Key::PageUp ? -layout_.getPage() : layout_.getPage();
        break;
    case Key::Home:
    case Key::End:
        to.y = key == Key::Home ? 0 : layout_.getNumRows() - 1;
        break;
    case Key::Left:
    case Key::Right:
        to.x += key == Key::Left ? -1 : 1;
        break;
    default:
        return false;
    }
    userSelect({std::clamp(to.x, 0, layout_.getNumColumns() - 1), std::clamp(to.y, 0, layout_.getNumRows() - 1)});
    return true;
}

// Editing

bool TableWidget::userStore(const WString& text, const XY<int>& cell)
{
    return canInteract() && isEditable(cell) && adaptor_->storeFieldText(text, cell);
}

bool TableWidget::beginsEdit(const Event& press) const
{
    const bool types = press.key == Key::Character && !press.text.empty();
    return (types || press.key == Key::Enter || press.key == Key::F2) && isShown() && canInteract() &&
           layout_.isCell(editableCellNear(getCurrentCell()));
}

void TableWidget::beginEditBy(const Event& event)
{
    const GlobRef<TableWidget> self(this);
    if (edit_.begin(editableCellNear(getCurrentCell())) && self && event.key == Key::Character && edit_.isOpen())
        edit_.box()->userEdit(event.text);
}

// Input

bool TableWidget::usesKey(const Event& press) const
{
    if (drag_ && press.isKeyPress(Key::Escape))
        return true;
    // Keys that the entry leaves over are not for the cells around it.
    const bool forCells = press.isPlainKeyPress() && !edit_.isOpen();
    return (forCells && (moves(press.key) || beginsEdit(press))) || Control::usesKey(press);
}

bool TableWidget::handleKeyEvent(const Event& event)
{
    if (drag_ && event.isKeyPress(Key::Escape)) {
        drag_->abort();
        drag_.reset();
        return true;
    }
    if (!event.isPlainKeyPress() || event.key == Key::Menu)
        return Control::handleKeyEvent(event);
    if (!move(event.key))
        beginEditBy(event);
    return true;
}

void TableWidget::handleFocusEvent(bool gained)
{
    if (gained && !current_.isSet() && layout_.getNumRows() > 0) {
        const XY<int> first = editableCellNear({0, 0});
        userSelect(layout_.isCell(first) ? first : XY<int>{0, 0});
    }
}

bool TableWidget::handleMouseEvent(const Event& event)
{
    pointer_ = event.position;
    switch (event.code) {
    case EventCode::MousePress:
    case EventCode::MouseDoubleClick:
        return pressed(event);
    case EventCode::MouseMove:
    case EventCode::MouseRelease:
    case EventCode::MouseCancel:
        return dragged(event) || Control::handleMouseEvent(event);
    case EventCode::MouseWheel:
        return turned(event) || Control::handleMouseEvent(event);
    default:
        return Control::handleMouseEvent(event);
    }
}

bool TableWidget::pressed(const Event& event)
{
    const int edge = layout_.edgeAt(event.position);
    if (event.isPress(MouseButton::Left) && edge >= 0) {
        drag_ = std::make_unique<TableColumnDrag>(*this, edge, event.position.x);
        return true;
    }
    const GlobRef<TableWidget> self(this);
    const XY<int> cell = layout_.cellAt(event.position);
    userSelect(cell);
    if (!self || !event.isPress(MouseButton::Left))
        return self && Control::handleMouseEvent(event);
    if (event.code == EventCode::MouseDoubleClick)
        edit_.begin(editableCellNear(cell));
    return true;
}

bool TableWidget::dragged(const Event& event)
{
    if (!drag_)
        return false;
    if (event.code == EventCode::MouseMove) {
        drag_->motion(event.position.x);
        return true;
    }
    if (event.code == EventCode::MouseCancel)
        drag_->abort();
    drag_.reset();
    return true;
}

bool TableWidget::turned(const Event& event)
{
    const int before = layout_.getScroll();
    userScroll(before - static_cast<int>(event.wheel * kRowsPerNotch * layout_.getRowHeight()));
    return layout_.getScroll() != before;
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
        changed(PeerChange::kLook);
}

void TableWidget::userResizeColumn(int column, int width)
{
    if (!layout_.setColumnWidth(column, width))
        return;
    edit_.place();
    changed(PeerChange::kLook);
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
    changed(PeerChange::kLook);
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

void TableWidget::draw(CanvasRenderer& renderer)
{
    TablePainter(*this, renderer).all();
}

} // namespace oribund
