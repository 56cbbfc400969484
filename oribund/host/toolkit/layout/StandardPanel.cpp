#include "oribund/host/toolkit/layout/StandardPanel.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/toolkit/core/BringTogether.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace oribund
{

StandardPanel::StandardPanel(const GlobCreationInfo& info)
    : MenuGlob(info)
    , border_(info.border)
{
}

StandardPanel::~StandardPanel() = default;

void StandardPanel::place(std::unique_ptr<Glob> widget, const WidgetPosition& position, const WidgetSurround& surround)
{
    placements_.push_back({widget.get(), position, surround});
    addChild(std::move(widget));
}

void StandardPanel::destroyWidget(Glob& widget)
{
    removeChild(widget);
}

Glob* StandardPanel::previousWidget() const
{
    return placements_.empty() ? nullptr : placements_.back().widget;
}

void StandardPanel::setWidgetPosition(Glob& widget, const WidgetPosition& position)
{
    for (Placement& placement : placements_) {
        if (placement.widget == &widget)
            placement.position = position;
    }
    widgetsChanged();
}

void StandardPanel::stackWidgets(const std::vector<Glob*>& order, int gap)
{
    const std::unordered_set<const Glob*> meant(order.begin(), order.end());
    const auto isMeant = [&](const Glob* widget) { return meant.count(widget) > 0; };
    const auto widgetOf = [](const Placement& placement) { return placement.widget; };
    const auto first = std::find_if(placements_.begin(), placements_.end(),
                                    [&](const Placement& placement) { return isMeant(placement.widget); });
    if (first == placements_.end())
        return;
    const auto index = first - placements_.begin();
    const WidgetPosition top = first->position;
    bringTogether(placements_, order, widgetOf);
    reorderChildren(order);
    const auto placed = std::count_if(placements_.begin(), placements_.end(),
                                      [&](const Placement& placement) { return isMeant(placement.widget); });
    const auto last = placements_.begin() + index + placed;
    for (auto one = placements_.begin() + index; one != last; ++one)
        one->position = one == placements_.begin() + index ? top : WidgetPosition::below(*std::prev(one)->widget, gap);
    for (auto other = last; other != placements_.end(); ++other)
        if (isMeant(static_cast<const Glob*>(other->position.relativeTo)))
            other->position.relativeTo = order.back();
    widgetsChanged();
}

void StandardPanel::setBorder(const Border& border)
{
    if (border == border_)
        return;
    border_ = border;
    widgetsChanged();
    redraw();
}

Kt::Box<int> StandardPanel::getUserArea() const
{
    return {border_.left, border_.top, std::max(border_.left, getWidth() - border_.right),
            std::max(border_.top, getHeight() - border_.bottom)};
}

Palette StandardPanel::makeTitleAreaPalette() const
{
    Palette palette = getPalette();
    palette.setColour(PaletteRole::WindowText, palette.headingText());
    palette.setColour(PaletteRole::ButtonText, palette.headingText());
    return palette;
}

bool StandardPanel::widgetVisibilityCanChange(const Glob*) const
{
    return true;
}

void StandardPanel::getTabOrderables(std::vector<TabOrderable*>& stops)
{
    if (!tabStops().empty()) {
        stops.insert(stops.end(), tabStops().begin(), tabStops().end());
        return;
    }
    std::vector<Glob*> children;
    getChildren(children);
    for (Glob* child : children) {
        if (auto* host = dynamic_cast<TabOrderableHost*>(child))
            host->getTabOrderables(stops);
        else if (auto* stop = dynamic_cast<TabOrderable*>(child))
            stops.push_back(stop);
    }
}

// Layout

void StandardPanel::resize(double width, double height)
{
    RedrawHold hold;
    const XY<int> old = getSize();
    if (!applySize(width, height))
        return;
    relayout();
    tellParentOfResize(old);
}

void StandardPanel::relayout()
{
    if (layoutHolds_ > 0) {
        layoutPending_ = true;
        return;
    }
    RedrawHold hold;
    GlobRef<StandardPanel> self(this);
    beginLayoutHold();
    layoutChildren();
    if (!self)
        return;
    endLayoutHold();
    layoutPending_ = false; // what has happened to the widgets is the layout's own doing
    noteRows();
}

void StandardPanel::widgetsChanged()
{
    if (layoutHolds_ > 0)
        layoutPending_ = true;
    else
        contentsChanged();
}

void StandardPanel::endHoldAndLayOut()
{
    endLayoutHold();
    if (layoutHolds_ == 0 && std::exchange(layoutPending_, false))
        contentsChanged();
}

LayoutHold::LayoutHold(StandardPanel& panel)
    : panel_(&panel)
{
    panel.beginLayoutHold();
}

LayoutHold::~LayoutHold()
{
    if (panel_)
        panel_->endHoldAndLayOut();
}

void StandardPanel::layoutChildren()
{
    const Kt::Box<int> area = getUserArea();
    for (std::size_t i = 0; i < placements_.size(); ++i)
        placeWidget(i, area);
}

const StandardPanel::Placement* StandardPanel::findBefore(std::size_t index, const Glob* widget) const
{
    // Backwards: a widget mostly stands beside the one added just before it.
    while (widget && index-- > 0) {
        if (placements_[index].widget == widget)
            return &placements_[index];
    }
    return nullptr;
}

XY<int> StandardPanel::resolve(const Placement& placement, const Placement* other, const Kt::Box<int>& area) const
{
    using Anchor = WidgetPosition::Anchor;
    const WidgetSurround& around = placement.surround;
    const XY<int>& offset = placement.position.offset;
    const int width = placement.widget->getWidth();
    if (!other) {
        const int x = placement.position.anchor == Anchor::UserTopRight ? area.right - width - offset.x - around.right
                                                                        : area.left + offset.x + around.left;
        return {x, area.top + offset.y + around.top};
    }
    const Kt::Box<int> box = other->widget->box();
    const bool seen = other->widget->isVisible();
    const int top = box.top + offset.y;
    switch (placement.position.anchor) {
    case Anchor::RightOf:
        return {seen ? box.right + other->surround.right + offset.x + around.left : box.left, top};
    case Anchor::LeftOf:
        return {(seen ? box.left - other->surround.left - offset.x - around.right : box.right) - width, top};
    default:
        return {box.left - other->surround.left + offset.x + around.left,
                other->edge + (other->edgeIsReal ? offset.y : 0) + around.top};
    }
}

void StandardPanel::placeWidget(std::size_t index, const Kt::Box<int>& area)
{
    Placement& placement = placements_[index];
    Glob& widget = *placement.widget;
    const auto anchor = placement.position.anchor;
    const bool isRelative =
        anchor != WidgetPosition::Anchor::UserTopLeft && anchor != WidgetPosition::Anchor::UserTopRight;
    const Placement* other = isRelative ? findBefore(index, placement.position.relativeTo) : nullptr;

    const XY<int> at = resolve(placement, other, area);
    widget.setPosition(at);
    if (placement.surround.followWidth)
        widget.resize(std::max(0, area.right - placement.surround.right - at.x), widget.getHeight());

    if (widget.isVisible()) {
        placement.edge = widget.box().bottom + placement.surround.bottom;
        placement.edgeIsReal = true;
    } else if (other) {
        placement.edge = other->edge;
        placement.edgeIsReal = other->edgeIsReal;
    } else {
        placement.edge = at.y - placement.surround.top;
        placement.edgeIsReal = false;
    }
}

int StandardPanel::contentBottom() const
{
    int bottom = getUserArea().top;
    for (const Placement& placement : placements_) {
        if (placement.widget->isVisible())
            bottom = std::max(bottom, placement.widget->box().bottom + placement.surround.bottom);
    }
    return bottom + border_.bottom;
}

void StandardPanel::contentsChanged()
{
    relayout();
}

void StandardPanel::handleChildResize(const Glob*, const XY<int>&)
{
    widgetsChanged();
}

void StandardPanel::handleChildrenChanged(Glob*)
{
    widgetsChanged();
}

void StandardPanel::handleChildRemoved(const Glob* child)
{
    const auto found = std::find_if(placements_.rbegin(), placements_.rend(),
                                    [child](const Placement& placement) { return placement.widget == child; });
    if (found == placements_.rend())
        return;
    const WidgetPosition inherited = found->position;
    // Only what was added later can stand beside it.
    for (auto later = placements_.erase(std::next(found).base()); later != placements_.end(); ++later) {
        if (later->position.relativeTo == child)
            later->position = inherited;
    }
    widgetsChanged();
}

// Look

void StandardPanel::setActive(bool active, eRedrawFlag redrawFlag)
{
    RedrawHold hold;
    GlobRef<StandardPanel> self(this);
    MenuGlob::setActive(active, redrawFlag);
    if (self)
        forEachChild([=](Glob& child) { child.setActive(active, redrawFlag); });
}

void StandardPanel::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Group;
}

void StandardPanel::draw(CanvasRenderer& renderer)
{
    renderer.fillRect(CanvasRenderer::toDouble(localBox()), getPalette().window());
    drawBorder(renderer);
}

void StandardPanel::drawBorder(CanvasRenderer& renderer)
{
    if (!border_.isVisible())
        return;
    const double right = getWidth();
    const double bottom = getHeight();
    const Colour& colour = getPalette().border();
    if (border_.sides & Border::kTop)
        renderer.fillRect({0.0, 0.0, right, 1.0}, colour);
    if (border_.sides & Border::kBottom)
        renderer.fillRect({0.0, bottom - 1.0, right, bottom}, colour);
    if (border_.sides & Border::kLeft)
        renderer.fillRect({0.0, 1.0, 1.0, bottom - 1.0}, colour);
    if (border_.sides & Border::kRight)
        renderer.fillRect({right - 1.0, 1.0, right, bottom - 1.0}, colour);
}

} // namespace oribund
