#include "oribund/panels/FXPanelGenerator.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/services/Log.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/panels/ParamGroup.h"
#include "oribund/panels/ParamWalk.h"

#include <algorithm>
#include <utility>

namespace oribund
{

namespace
{

using ListKind = ParamPresentationDetails::Kind;

int gapBetweenRows()
{
    return UifStd::getRowGap() / 2;
}

} // namespace

/** A container that is being filled. */
struct FXPanelGenerator::Level {
    explicit Level(StandardPanel& filled)
        : panel(&filled)
        , hold(std::make_unique<LayoutHold>(filled))
    {
    }

    StandardPanel* panel;
    std::unique_ptr<LayoutHold> hold;
    std::unique_ptr<ParamGroup> made; ///< the panel, if it is a new group
    std::vector<Glob*> order;
    bool hasKept = false; ///< the order is not that in which the widgets were added
};

/** What was shown before, as far as it has not found its place again. */
class FXPanelGenerator::Regeneration
{
public:
    WidgetMap widgets;
    std::vector<GlobRef<ParamGroup>> groups;
};

FXPanelGenerator::FXPanelGenerator()
    : nextSurround_(getGroupSeparator())
{
}

FXPanelGenerator::FXPanelGenerator(const FXViewHandle& handle, StandardPanel* panel, TabOrderManager* tabOrder)
    : FXPanelGenerator()
{
    init(handle, panel, tabOrder);
}

FXPanelGenerator::FXPanelGenerator(const FXPanelGenerator& other)
    : FXPanelGenerator()
{
    *this = other;
}

FXPanelGenerator& FXPanelGenerator::operator=(const FXPanelGenerator& other)
{
    handle_ = other.handle_;
    target_ = other.target_;
    panel_ = other.panel_;
    tabOrder_ = other.tabOrder_;
    container_ = other.container_;
    containerWidth_ = other.containerWidth_;
    initialLabelWidth_ = other.initialLabelWidth_;
    depth_ = other.depth_;
    groupSizeChange_ = other.groupSizeChange_;
    palette_ = other.palette_;
    nextSurround_ = other.nextSurround_;
    plan_ = other.plan_;
    root_ = other.root_;
    widgets_ = other.widgets_;
    groups_ = other.groups_;
    return *this;
}

FXPanelGenerator::~FXPanelGenerator() = default;

void FXPanelGenerator::init(const FXViewHandle& handle, StandardPanel* panel, TabOrderManager* tabOrder)
{
    handle_ = target_ = handle;
    panel_ = panel;
    tabOrder_ = tabOrder;
}

// Generation

void FXPanelGenerator::generateUI()
{
    generateUI(handle_.getViewEffectID());
}

void FXPanelGenerator::generateUI(const IdStamp& effectId)
{
    generateUI(effectId, nullptr);
}

void FXPanelGenerator::generateUI(const IdStamp& effectId, Glob* container)
{
    if (!panel_)
        return;
    auto* const inside = dynamic_cast<StandardPanel*>(container);
    StandardPanel& root = inside ? *inside : *panel_;
    containerWidth_ = clampedWidth(root.getUserArea().width());
    const Kt::Ptr<EffectInstance> effect = findTarget(effectId);
    initialLabelWidth_ = calcInitialLabelWidth();
    if (!effect)
        return;
    PresentationPlan plan = PresentationPlan::of(effect);
    const RedrawHold redraws;
    if (plan == plan_ && root_ == &root && isComplete())
        refreshKept(*effect);
    else
        showPlan(std::move(plan), *effect, root);
}

/** The effect to show, at which the rows then look through a handle of their own. */
Kt::Ptr<EffectInstance> FXPanelGenerator::findTarget(const IdStamp& effectId)
{
    target_ = handle_;
    Kt::Ptr<EffectInstance> effect = handle_.getEffectPtr();
    if (!effect || effect->id() == effectId)
        return effect;
    const EffectInstance::ChildPath path = effect->findEmbeddedChild(effectId);
    Kt::Ptr<EffectInstance> target = path.empty() ? effect->getMask() : effect->getEmbeddedChild(path);
    if (target)
        target_.setViewEffectID(target->id());
    return target;
}

bool FXPanelGenerator::isComplete() const
{
    const auto isThere = [](const auto& shown) { return static_cast<bool>(shown.second.widget); };
    return !widgets_.empty() && std::all_of(widgets_.begin(), widgets_.end(), isThere);
}

void FXPanelGenerator::refreshKept(const EffectInstance& effect)
{
    for (const auto& [id, shown] : widgets_)
        if (const auto param = effect.findParam(id); param && paramControlOf(*param) == shown.shape.control)
            refreshName(*shown.widget, *param, makeParamName(param));
    setLabelWidth(initialLabelWidth_);
}

void FXPanelGenerator::showPlan(PresentationPlan plan, const EffectInstance& effect, StandardPanel& root)
{
    if (plan.wasUnbalanced())
        logf("FXPanelGenerator : starts and ends of groups do not match in %s\n", effect.tagTypeId().c_str());
    const Canvas* const canvas = root.canvas();
    const GlobRef<Glob> keyboard(canvas ? canvas->focusOwner() : nullptr);
    before_ = std::make_unique<Regeneration>(Regeneration{std::move(widgets_), std::move(groups_)});
    widgets_.clear();
    groups_.clear();
    levels_.clear();
    plan_ = std::move(plan);
    root_ = GlobRef<StandardPanel>(&root);
    depth_ = 1;
    {
        const LayoutHold layout(root);
        ParamWalk walk(effect);
        openLevel(root);
        for (const PresentationPlan::Entry& entry : plan_.entries()) {
            if (entry.details.kind == ListKind::GroupStart)
                startGroup(entry.details);
            else if (entry.details.kind == ListKind::GroupEnd)
                endGroup();
            else
                showParam(entry, effect, walk.indexOf(entry.details.id));
        }
        closeLevel();
        destroyLeftOver();
    }
    // A widget that has moved to another group has lost it on the way.
    if (keyboard && !keyboard->hasFocus())
        keyboard->takeFocus();
}

void FXPanelGenerator::showParam(const PresentationPlan::Entry& entry, const EffectInstance& effect, int index)
{
    const auto param = effect.paramAt(index);
    nextSurround_ = surroundOf(entry.shape.control);
    Glob* widget = takeKept(entry);
    if (widget) {
        refreshName(*widget, *param, makeParamName(param));
        setNameWidth(*widget, calcLabelWidth());
        keep(*widget, nextSurround_);
    } else {
        const auto width = clampedWidth(containerWidth_ - nextSurround_.left);
        visitParam(*param,
                   [&](auto& typed) { widget = createParamUI(Kt::Ptr(&typed), width, currentPanel()->canvas()); });
        if (widget)
            addWidgetInternal(param, widget);
    }
    nextSurround_ = getGroupSeparator();
    if (!widget)
        return;
    Shown& shown = widgets_[entry.details.id];
    shown.shape = entry.shape;
    if (!(shown.widget == widget))
        shown.widget = GlobRef<Glob>(widget);
    for (int i = 1; i <= entry.shape.followers; ++i)
        widgets_[effect.paramAt(index + i)->id()] = {GlobRef<Glob>(widget), entry.shape};
}

Glob* FXPanelGenerator::takeKept(const PresentationPlan::Entry& entry)
{
    const auto found = before_->widgets.find(entry.details.id);
    if (found == before_->widgets.end())
        return nullptr;
    const Shown shown = found->second;
    if (!shown.widget || shown.shape != entry.shape)
        return nullptr;
    if (shown.shape.followers == 0)
        before_->widgets.erase(found);
    else
        std::erase_if(before_->widgets, [&](const auto& other) { return other.second.widget == shown.widget.get(); });
    return shown.widget.get();
}

void FXPanelGenerator::keep(Glob& widget, const WidgetSurround& surround)
{
    Level& level = levels_.back();
    level.hasKept = true;
    if (widget.parent() != level.panel) {
        std::unique_ptr<Glob> moved = widget.parent()->removeChild(widget);
        level.panel->addWidget(std::move(moved), calcWidgetPosition(), surround);
    }
    level.order.push_back(&widget);
    addWidgetToTabOrder(&widget);
}

void FXPanelGenerator::destroyLeftOver()
{
    const auto destroy = [](Glob* glob) {
        if (glob && glob->parent())
            glob->parent()->removeChild(*glob);
    };
    for (const auto& [id, shown] : before_->widgets) {
        destroy(shown.widget.get());
        switches_.erase(id);
    }
    for (const auto& group : before_->groups)
        destroy(group.get());
    before_.reset();
}

// Containers

StandardPanel* FXPanelGenerator::currentPanel() const
{
    return levels_.empty() ? panel_ : levels_.back().panel;
}

void FXPanelGenerator::openLevel(StandardPanel& panel)
{
    levels_.emplace_back(panel);
    container_ = &panel;
    containerWidth_ = clampedWidth(panel.getUserArea().width());
    palette_ = panel.getPalette();
}

void FXPanelGenerator::closeLevel()
{
    const Level closed = std::move(levels_.back());
    levels_.pop_back();
    if (closed.hasKept)
        closed.panel->stackWidgets(closed.order, gapBetweenRows());
}

WidgetGroupEx* FXPanelGenerator::startGroup(const EffectInstance::ParamPresentationDetails& details)
{
    if (!panel_)
        return nullptr;
    if (levels_.empty())
        openLevel(*panel_);
    ParamGroup* group = takeKeptGroup(details);
    std::unique_ptr<ParamGroup> made;
    if (!group) {
        made = makeGroup(details);
        group = made.get();
    }
    groups_.emplace_back(group);
    if (tabOrder_)
        tabOrder_->addTabStop(group, TabOrderManager::kAppend);
    openLevel(*group);
    levels_.back().made = std::move(made);
    ++depth_;
    return group;
}

ParamGroup* FXPanelGenerator::takeKeptGroup(const EffectInstance::ParamPresentationDetails& details)
{
    if (!before_)
        return nullptr;
    const auto found = std::find_if(before_->groups.begin(), before_->groups.end(),
                                    [&](const auto& group) { return group && group->details().id == details.id; });
    if (found == before_->groups.end())
        return nullptr;
    ParamGroup& group = **found;
    before_->groups.erase(found);
    group.setDetails(details);
    return &group;
}

std::unique_ptr<ParamGroup> FXPanelGenerator::makeGroup(const EffectInstance::ParamPresentationDetails& details)
{
    const Kt::Ptr<EffectInstance> effect = target_.getEffectPtr();
    ParamGroup::InitArgs args(containerWidth_, 0, currentPanel()->canvas());
    args.palette = palette_;
    args.title = details.title;
    args.titleColour = getGroupTitleColour();
    args.sizeState = getInitialSizeState(effect ? effect->tagTypeId() : String(), details, Glob::eSizeNormal);
    args.viewHandle = target_;
    args.details = details;
    auto group = std::make_unique<ParamGroup>(args);
    group->setSeparatorStyle(WidgetGroupEx::eNoSeparator);
    group->setSizeChangeEnabled(groupSizeChange_);
    return group;
}

void FXPanelGenerator::endGroup()
{
    if (depth_ <= 1 || levels_.size() <= 1)
        return;
    --depth_;
    std::unique_ptr<ParamGroup> made = std::move(levels_.back().made);
    StandardPanel& group = *levels_.back().panel;
    closeLevel();
    Level& outer = levels_.back();
    container_ = outer.panel;
    containerWidth_ = clampedWidth(outer.panel->getUserArea().width());
    palette_ = outer.panel->getPalette();
    if (!made) {
        keep(group, getGroupSeparator());
        return;
    }
    outer.panel->addWidget(std::move(made), calcWidgetPosition(), getGroupSeparator());
    outer.order.push_back(&group);
    if (!before_ && levels_.size() == 1)
        closeLevel(); // a group of a derived class's own
}

WidgetGroupEx* FXPanelGenerator::findGroup(const IdStamp& id) const
{
    const auto found = std::find_if(groups_.begin(), groups_.end(),
                                    [&](const auto& group) { return group && group->details().id == id; });
    return found == groups_.end() ? nullptr : found->get();
}

WidgetGroupEx* FXPanelGenerator::findGroup(const LightweightString<wchar_t>& title) const
{
    const auto found = std::find_if(groups_.begin(), groups_.end(), [&](const auto& group) {
        return group && displayText(group->getTitle()) == title;
    });
    return found == groups_.end() ? nullptr : found->get();
}

void FXPanelGenerator::getAllGroups(Vector<WidgetGroupEx*>& groups)
{
    for (const auto& group : groups_)
        if (group)
            groups.push_back(group.get());
}

// Widgets

void FXPanelGenerator::addWidgetInternal(const Kt::Ptr<EffectValParamBase>& param, Glob* widget)
{
    if (container_)
        addWidgetInternal(param, widget, calcWidgetPosition(), nextSurround_);
    else
        addWidgetInternal(param, widget, Glob::UserTopLeft(0, 0), getGroupSeparator());
}

void FXPanelGenerator::addWidgetInternal(const Kt::Ptr<EffectValParamBase>& param, Glob* widget,
                                         const WidgetPosition& position, WidgetSurround surround)
{
    std::unique_ptr<Glob> owned(widget);
    StandardPanel* const panel = currentPanel();
    if (!panel || !widget)
        return;
    const bool isPlaced = position.relativeTo || !panel->previousWidget();
    panel->addWidget(std::move(owned), isPlaced ? position : calcWidgetPosition(), surround);
    if (!levels_.empty())
        levels_.back().order.push_back(widget);
    addWidgetToTabOrder(widget);
    const ParamControl control = paramControlOf(*param);
    widgets_[param->id()] = {GlobRef<Glob>(widget), {control}};
    auto* const box = control == ParamControl::Switch ? dynamic_cast<Checkbox*>(widget) : nullptr;
    if (box) {
        auto& callback = switches_[param->id()];
        callback = std::make_unique<SwitchCallback>(this, &FXPanelGenerator::handleBinaryItemEvent);
        callback->attach(box->events());
    }
}

WidgetPosition FXPanelGenerator::calcWidgetPosition()
{
    const bool isBehindOwn = !levels_.empty() && !levels_.back().order.empty();
    const Glob* const above = isBehindOwn ? levels_.back().order.back() : currentPanel()->previousWidget();
    return above ? WidgetPosition::below(*above, gapBetweenRows()) : Glob::UserTopLeft(0, 0);
}

void FXPanelGenerator::addWidgetToTabOrder(Glob* widget)
{
    if (!tabOrder_)
        return;
    if (auto* const host = dynamic_cast<TabOrderableHost*>(widget))
        tabOrder_->addTabStopsFrom(host, TabOrderManager::kAppend);
    else if (auto* const stop = dynamic_cast<TabOrderable*>(widget))
        tabOrder_->addTabStop(stop, TabOrderManager::kAppend);
}

Glob* FXPanelGenerator::findWidgetForParam(const EffectValParamBase* param) const
{
    const auto found = param ? widgets_.find(param->id()) : widgets_.end();
    return found == widgets_.end() ? nullptr : found->second.widget.get();
}

/** Through its message, which its adaptor hears: whoever sends it has the same effect. */
int FXPanelGenerator::handleBinaryItemEvent(const CheckboxEvent& event)
{
    if (event.kind == CheckboxEvent::Kind::Toggled)
        event.box->sendMsg(event.box->getMessage());
    return 0;
}

} // namespace oribund
