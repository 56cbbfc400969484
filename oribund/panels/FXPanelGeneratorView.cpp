// What a generated panel shows of itself: its names, which of its controls are to be seen, and what all such panels
// have in common.

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/panels/FXPanelGenerator.h"
#include "oribund/panels/GroupSizes.h"
#include "oribund/panels/ParamGroup.h"
#include "oribund/panels/ParamWalk.h"

#include <algorithm>
#include <utility>

namespace oribund
{

namespace
{

constexpr std::size_t kLongestName = 64;

} // namespace

unsigned short FXPanelGenerator::clampedWidth(int pixels)
{
    return static_cast<unsigned short>(std::clamp(pixels, 0, 0xffff));
}

// Names

unsigned short FXPanelGenerator::calcInitialLabelWidth() const
{
    const int row = UifStd::getRowHeight();
    const Kt::Ptr<EffectInstance> effect = target_.getEffectPtr();
    if (!effect)
        return clampedWidth(3 * row);
    ParamWalk walk(*effect);
    int indent = 0;
    int widest = 0;
    for (const ParamPresentationDetails& entry : effect->presentation()) {
        if (entry.kind == ParamPresentationDetails::Kind::GroupStart)
            indent += WidgetGroupEx::childXOffset();
        else if (entry.kind == ParamPresentationDetails::Kind::GroupEnd)
            indent -= WidgetGroupEx::childXOffset();
        else if (const auto param = walk.find(entry.id))
            widest = std::max(widest, indent + UifStd::measure(makeParamName(param)));
    }
    return clampedWidth(std::clamp(widest + UifStd::getWidgetGap(), 3 * row, 7 * row));
}

unsigned short FXPanelGenerator::calcLabelWidth() const
{
    return clampedWidth(initialLabelWidth_ - WidgetGroupEx::childXOffset() * (depth_ - 1));
}

void FXPanelGenerator::setLabelWidth(unsigned short width)
{
    const RedrawHold hold;
    initialLabelWidth_ = width;
    depth_ = 1;
    for (const PresentationPlan::Entry& entry : plan_.entries()) {
        if (entry.details.kind == ParamPresentationDetails::Kind::GroupStart)
            ++depth_;
        else if (entry.details.kind == ParamPresentationDetails::Kind::GroupEnd)
            --depth_;
        else if (const auto found = widgets_.find(entry.details.id); found != widgets_.end() && found->second.widget)
            setNameWidth(*found->second.widget, calcLabelWidth());
    }
}

LightweightString<wchar_t> FXPanelGenerator::makeParamName(const Kt::Ptr<EffectValParamBase>& param) const
{
    WString name = rowNameOf(*param);
    if (name.size() <= kLongestName)
        return name;
    return WString(name.view().substr(0, kLongestName - 1)) + L"\u2026";
}

// What is left out

void FXPanelGenerator::showOnly(const std::function<bool(const EffectValParamBase&)>& isWanted)
{
    const Kt::Ptr<EffectInstance> effect = target_.getEffectPtr();
    if (!effect || !root_)
        return;
    const RedrawHold redraws;
    const LayoutHold layout(*root_);
    auto group = groups_.begin();
    std::vector<std::pair<ParamGroup*, bool>> open; // and whether anything is shown in it
    for (const PresentationPlan::Entry& entry : plan_.entries()) {
        if (entry.details.kind == ParamPresentationDetails::Kind::GroupStart) {
            open.emplace_back((group++)->get(), false);
        } else if (entry.details.kind == ParamPresentationDetails::Kind::GroupEnd) {
            const auto [closed, isShown] = open.back();
            open.pop_back();
            if (isShown && !open.empty())
                open.back().second = true;
            if (closed)
                showGroup(*closed, isShown, static_cast<bool>(isWanted));
        } else if (showControl(entry, *effect, isWanted) && !open.empty()) {
            open.back().second = true;
        }
    }
}

void FXPanelGenerator::showGroup(ParamGroup& group, bool isShown, bool isUnfolded) const
{
    const Kt::Ptr<EffectInstance> effect = target_.getEffectPtr();
    group.setVisible(isShown);
    group.setSizeState(isUnfolded ? Glob::eSizeNormal
                                  : getInitialSizeState(effect->tagTypeId(), group.details(), Glob::eSizeNormal));
}

bool FXPanelGenerator::showControl(const PresentationPlan::Entry& entry, const EffectInstance& effect,
                                   const std::function<bool(const EffectValParamBase&)>& isWanted)
{
    const auto found = widgets_.find(entry.details.id);
    if (found == widgets_.end() || !found->second.widget)
        return false;
    const int index = effect.indexOfParam(entry.details.id);
    bool isShown = !isWanted;
    for (int i = 0; !isShown && index >= 0 && i <= entry.shape.followers; ++i)
        isShown = isWanted(*effect.paramAt(index + i));
    found->second.widget->setVisible(isShown);
    return isShown;
}

// What all panels have in common

unsigned short FXPanelGenerator::calcSize(eUIMetric metric)
{
    switch (metric) {
    case eUIMetric::WidgetGap:
        return clampedWidth(UifStd::getWidgetGap());
    case eUIMetric::RowHeight:
        return clampedWidth(UifStd::getRowHeight());
    case eUIMetric::LeastLabelWidth:
        return clampedWidth(3 * UifStd::getRowHeight());
    default:
        return 0;
    }
}

WidgetSurround FXPanelGenerator::getGroupSeparator()
{
    return {0, 0, 0, 0, true};
}

Colour FXPanelGenerator::getGroupTitleColour()
{
    return UifStd::getColourScheme().headingText();
}

Glob::eSizeState FXPanelGenerator::getInitialSizeState(const LightweightString<char>& effectTag,
                                                       const LightweightString<wchar_t>& groupTitle,
                                                       Glob::eSizeState fallback)
{
    return GroupSizes::read(effectTag, groupTitle, fallback);
}

Glob::eSizeState FXPanelGenerator::getInitialSizeState(const LightweightString<char>& effectTag,
                                                       const EffectInstance::ParamPresentationDetails& details,
                                                       Glob::eSizeState fallback)
{
    return getInitialSizeState(effectTag, displayText(details.title),
                               details.isCollapsed() ? Glob::eSizeMinimised : fallback);
}

void FXPanelGenerator::setInitialSizeState(const LightweightString<char>& effectTag,
                                           const EffectInstance::ParamPresentationDetails& details,
                                           Glob::eSizeState state)
{
    GroupSizes::store(effectTag, displayText(details.title), state);
}

} // namespace oribund
