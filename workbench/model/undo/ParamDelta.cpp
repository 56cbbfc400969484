#include "workbench/model/undo/ParamDelta.h"

#include "oribund/host/effects/params/ParamText.h"

namespace workbench
{

using oribund::EffectValParamFnType;
using oribund::ParamValue;
using oribund::WString;

ParamDelta::ParamDelta(ObjectId effect, const oribund::IdStamp& param)
    : effect_(effect)
    , param_(param)
{
}

template <class T>
void ParamDelta::record(std::optional<Sides<T>>& sides, const T& before, const T& after)
{
    if (sides)
        sides->after = after;
    else
        sides = Sides<T>{before, after};
}

void ParamDelta::constantChanged(const ParamValue& before, const ParamValue& after)
{
    record(constant_, before, after);
}

void ParamDelta::functionTypeChanged(EffectValParamFnType before, EffectValParamFnType after)
{
    record(fnType_, before, after);
}

void ParamDelta::apply(Timeline& timeline)
{
    restore(timeline, true);
}

void ParamDelta::revert(Timeline& timeline)
{
    restore(timeline, false);
}

void ParamDelta::restore(Timeline& timeline, bool toAfter) const
{
    const auto effect = timeline.findEffect(effect_);
    const auto param = effect ? effect->findParam(param_) : oribund::EffectInstance::ParamPtr();
    if (!param)
        return;
    const oribund::JournalSuspension suspension(*param);
    keyframes_.restore(*param, toAfter);
    if (constant_)
        param->restoreConstant(toAfter ? constant_->after : constant_->before);
    if (fnType_)
        param->restoreFunctionType(toAfter ? fnType_->after : fnType_->before);
}

bool ParamDelta::isNull() const
{
    return (!constant_ || constant_->same()) && (!fnType_ || fnType_->same()) && keyframes_.isNull();
}

oribund::EditModification ParamDelta::modification() const
{
    oribund::EditModification modification;
    modification.type = oribund::EditModification::Type::EffectContent;
    modification.object = stampOf(effect_);
    return modification;
}

WString ParamDelta::describe(const Timeline& timeline) const
{
    const auto effect = timeline.findEffect(effect_);
    const auto param = effect ? effect->findParam(param_) : oribund::EffectInstance::ParamPtr();
    if (!param)
        return L"Change a parameter";
    const WString name = rowNameOf(*param);
    const auto fromTo = [&](const ParamValue& before, const ParamValue& after) {
        const WString from = valueText(*param, before);
        const WString to = valueText(*param, after);
        return from == to ? L"Change " + name : name + L" " + from + L" to " + to;
    };

    if (fnType_ && !fnType_->same())
        return (fnType_->after == EffectValParamFnType::Keyframed ? L"Animate " : L"Stop animating ") + name;
    const KeyframesDelta::Counts keys = keyframes_.count();
    if (keys.moved > 0)
        return L"Move " + oribund::keyframesText(keys.moved) + L" of " + name;
    if (keys.inserted > 0)
        return L"Add " + oribund::keyframesText(keys.inserted) + L" to " + name;
    if (keys.erased > 0)
        return L"Remove " + oribund::keyframesText(keys.erased) + L" from " + name;
    if (keys.changed == 1)
        return fromTo(keyframes_.valueAt(*param, keys.changedAt, false),
                      keyframes_.valueAt(*param, keys.changedAt, true));
    if (keys.changed > 1)
        return L"Change " + oribund::keyframesText(keys.changed) + L" of " + name;
    return constant_ ? fromTo(constant_->before, constant_->after) : L"Change " + name;
}

int ParamDelta::movedKeyframes() const
{
    return constant_ || fnType_ ? 0 : keyframes_.count().moved;
}

} // namespace workbench
