// What the user does with a table, by keys and mouse.

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"
#include "oribund/host/toolkit/lists/TableColumnDrag.h"
#include "oribund/host/toolkit/lists/TableWidget.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

constexpr int kRowsPerNotch = 3;

} // namespace

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

} // namespace oribund
