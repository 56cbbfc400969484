#include "oribund/host/toolkit/layout/MinimizableGroup.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/KeyTable.h"

#include <array>

namespace oribund
{

MinimizableGroup::MinimizableGroup(const InitArgs& args)
    : WidgetGroupEx(args)
    , sizeState_(args.sizeState)
    , minimisable_(args.minimisable)
{
    if (args.titleColour)
        setTitleColour(*args.titleColour);
    if (minimisable_)
        setTitleCursor(MouseCursor::Hand);
    WidgetGroupEx::resize(args.width, 0);
}

int MinimizableGroup::calcHeight() const
{
    return sizeState_ == eSizeMinimised ? calcMinHeight() : WidgetGroupEx::calcHeight();
}

bool MinimizableGroup::canToggle() const
{
    return minimisable_ && sizeChangeEnabled_ && isTitleRowShown();
}

void MinimizableGroup::setSizeState(eSizeState state)
{
    if (state == sizeState_)
        return;
    RedrawHold hold;
    GlobRef<MinimizableGroup> self(this);
    if (state == eSizeMinimised)
        keepFocus();
    if (!self)
        return;
    sizeState_ = state;
    beginLayoutHold();
    forEachChild([this, &self](Glob& child) {
        if (self)
            foldChild(child);
    });
    if (!self)
        return;
    endLayoutHold();
    changed(GlobChange::kState | GlobChange::kContents);
    contentsChanged();
}

/** The keyboard stays in a group that is folded, where the user can unfold it again, instead of going nowhere. */
void MinimizableGroup::keepFocus()
{
    const Canvas* where = canvas();
    const Glob* owner = where ? where->focusOwner() : nullptr;
    if (owner && owner != this && isAncestorOf(owner) && widgetVisibilityCanChange(owner))
        takeFocus();
}

void MinimizableGroup::foldChild(Glob& child)
{
    child.setFolded(sizeState_ == eSizeMinimised && widgetVisibilityCanChange(&child));
}

void MinimizableGroup::setSizeChangeEnabled(bool enabled)
{
    if (enabled == sizeChangeEnabled_)
        return;
    sizeChangeEnabled_ = enabled;
    if (!wantsFocus())
        dropFocus();
    changed(GlobChange::kState | GlobChange::kContents);
}

void MinimizableGroup::userToggleSizeState()
{
    if (!canToggle() || !canInteract())
        return;
    const GlobRef<MinimizableGroup> self(this);
    setSizeState(sizeState_ == eSizeMinimised ? eSizeNormal : eSizeMinimised);
    if (self)
        handleSizeToggle();
}

void MinimizableGroup::handleChildrenChanged(Glob* child)
{
    foldChild(*child);
    WidgetGroupEx::handleChildrenChanged(child);
}

// Input

bool MinimizableGroup::wantsFocus() const
{
    return canToggle() || WidgetGroupEx::wantsFocus();
}

bool MinimizableGroup::handleMouseEvent(const Event& event)
{
    const bool inTitle = getTitleArea().contains(event.position);
    if (event.isPress(MouseButton::Left) && inTitle && canToggle()) {
        pressed_ = true;
        return true;
    }
    if (pressed_ && event.code == EventCode::MouseRelease && event.button == MouseButton::Left) {
        pressed_ = false;
        if (inTitle)
            userToggleSizeState();
        return true;
    }
    if (event.code == EventCode::MouseCancel)
        pressed_ = false;
    return WidgetGroupEx::handleMouseEvent(event);
}

const KeyTable<MinimizableGroup>& MinimizableGroup::keys()
{
    constexpr auto kToggle = [](MinimizableGroup& widget, const Event& press) {
        if (!press.autoRepeat)
            widget.userToggleSizeState();
    };
    static constexpr KeyAction<MinimizableGroup> kActions[] = {
        {Key::Space, kToggle},
        {Key::Enter, kToggle},
        {Key::Left,
         [](MinimizableGroup& widget, const Event&) {
             if (widget.sizeState_ == eSizeNormal)
                 widget.userToggleSizeState();
         }},
        {Key::Right,
         [](MinimizableGroup& widget, const Event&) {
             if (widget.sizeState_ != eSizeNormal)
                 widget.userToggleSizeState();
         }},
    };
    static constexpr KeyTable<MinimizableGroup> kKeys(kActions);
    return kKeys;
}

bool MinimizableGroup::usesKey(const Event& press) const
{
    return (hasFocus() && canToggle() && keys().has(press)) || WidgetGroupEx::usesKey(press);
}

bool MinimizableGroup::handleKeyEvent(const Event& event)
{
    return keys().run(*this, event) || WidgetGroupEx::handleKeyEvent(event);
}

// Look

void MinimizableGroup::describe(AccessibleDescription& description) const
{
    WidgetGroupEx::describe(description);
    description.action = canToggle() ? AccessibleAction::Toggle : AccessibleAction::None;
    description.expandable = minimisable_;
    description.expanded = sizeState_ == eSizeNormal;
}

bool MinimizableGroup::accessibleActivate(int)
{
    userToggleSizeState();
    return canToggle();
}

int MinimizableGroup::titleTextOffset() const
{
    return minimisable_ ? UifStd::getGroupIndent() + UifStd::getWidgetGap() / 2 : 0;
}

void MinimizableGroup::draw(CanvasRenderer& renderer)
{
    WidgetGroupEx::draw(renderer);
    if (minimisable_ && isTitleRowShown())
        drawArrow(renderer);
}

void MinimizableGroup::drawArrow(CanvasRenderer& renderer)
{
    const Kt::Box<int> title = getTitleArea();
    const double size = UifStd::getGroupIndent() / 3.0;
    const XY<double> c{title.left + UifStd::getGroupIndent() / 2.0, title.top + title.height() / 2.0};
    const std::array<XY<double>, 3> down{
        {{c.x - size, c.y - size / 2}, {c.x + size, c.y - size / 2}, {c.x, c.y + size / 2}}};
    const std::array<XY<double>, 3> right{
        {{c.x - size / 2, c.y - size}, {c.x + size / 2, c.y}, {c.x - size / 2, c.y + size}}};
    const bool lit = canToggle() && canInteract();
    renderer.polygon(sizeState_ == eSizeMinimised ? right : down,
                     lit ? getPalette().windowText() : getPalette().disabledText());
}

} // namespace oribund
