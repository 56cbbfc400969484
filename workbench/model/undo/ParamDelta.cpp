#include "workbench/model/undo/ParamDelta.h"

#include "workbench/model/ParamConversion.h"

#include <algorithm>
#include <set>
#include <string>
#include <type_traits>

namespace workbench
{

using oribund::EffectValParamFnType;
using oribund::Keyframe;
using oribund::ParamValue;
using oribund::WString;

namespace
{
WString keyframes(int count)
{
    return oribund::toWide(count == 1 ? std::string("keyframe") : std::to_string(count) + " keyframes");
}

void setChannel(ParamValue& value, int channel, double number)
{
    std::visit(
        [&]<class P>(P& v) {
            const auto index = static_cast<std::size_t>(channel);
            if constexpr (std::is_same_v<P, double>)
                v = number;
            else if constexpr (std::is_same_v<P, oribund::Angle>)
                v.degrees = number;
            else if constexpr (std::is_same_v<P, oribund::ColourData> || std::is_same_v<P, oribund::Vector2d>)
                v[index] = number;
        },
        value);
}
} // namespace

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

ParamDelta::KeySides& ParamDelta::keyAt(int channel, double time, const std::optional<Keyframe>& before)
{
    return keys_.try_emplace({channel, time}, KeySides{before, before}).first->second;
}

void ParamDelta::constantChanged(const ParamValue& before, const ParamValue& after)
{
    record(constant_, before, after);
}

void ParamDelta::functionTypeChanged(EffectValParamFnType before, EffectValParamFnType after)
{
    record(fnType_, before, after);
}

void ParamDelta::keyframeInserted(int channel, const Keyframe& keyframe)
{
    keyAt(channel, keyframe.time, {}).after = keyframe;
}

void ParamDelta::keyframeErased(int channel, const Keyframe& keyframe)
{
    KeySides& sides = keyAt(channel, keyframe.time, keyframe);
    sides.after.reset();
    // A keyframe that is dragged leaves nothing where it only passed by.
    if (!sides.before)
        keys_.erase({channel, keyframe.time});
}

void ParamDelta::keyframeChanged(int channel, const Keyframe& before, const Keyframe& after)
{
    if (before.time != after.time) {
        keyframeErased(channel, before);
        keyframeInserted(channel, after);
    } else {
        keyAt(channel, before.time, before).after = after;
    }
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
    // What goes makes room for what comes: a keyframe may have been moved by less than two of them may lie apart.
    for (const auto& [place, sides] : keys_) {
        const auto& now = toAfter ? sides.before : sides.after;
        const auto& wanted = toAfter ? sides.after : sides.before;
        if (now && !wanted)
            param->restoreKeyframeErased(place.first, place.second);
    }
    for (const auto& [place, sides] : keys_) {
        const auto& now = toAfter ? sides.before : sides.after;
        const auto& wanted = toAfter ? sides.after : sides.before;
        if (!now && wanted)
            param->restoreKeyframeInserted(place.first, *wanted);
        else if (now && wanted && *now != *wanted)
            param->restoreKeyframeChanged(place.first, *wanted);
    }
    if (constant_)
        param->restoreConstant(toAfter ? constant_->after : constant_->before);
    if (fnType_)
        param->restoreFunctionType(toAfter ? fnType_->after : fnType_->before);
}

bool ParamDelta::isNull() const
{
    return (!constant_ || constant_->same()) && (!fnType_ || fnType_->same()) &&
           std::all_of(keys_.begin(), keys_.end(), [](const auto& entry) { return entry.second.same(); });
}

oribund::EditModification ParamDelta::modification() const
{
    oribund::EditModification modification;
    modification.type = oribund::EditModification::Type::EffectContent;
    modification.object = stampOf(effect_);
    return modification;
}

ParamDelta::KeyCounts ParamDelta::countKeys() const
{
    KeyCounts counts;
    std::set<double> changed;
    for (const auto& [place, sides] : keys_) {
        const bool first = place.first == 0;
        counts.inserted += first && !sides.before && sides.after;
        counts.erased += first && sides.before && !sides.after;
        if (sides.before && sides.after && !sides.same())
            changed.insert(place.second);
    }
    counts.changed = static_cast<int>(changed.size());
    if (!changed.empty())
        counts.changedAt = *changed.begin();
    return counts;
}

ParamValue ParamDelta::valueAt(const oribund::EffectValParamBase& param, double time, bool after) const
{
    ParamValue value = param.valueAt(time);
    for (const auto& [place, sides] : keys_)
        if (place.second == time && sides.before && sides.after)
            setChannel(value, place.first, after ? sides.after->value : sides.before->value);
    return value;
}

WString ParamDelta::describe(const Timeline& timeline) const
{
    const auto effect = timeline.findEffect(effect_);
    const auto param = effect ? effect->findParam(param_) : oribund::EffectInstance::ParamPtr();
    if (!param)
        return L"Change a parameter";
    const WString name = param->description().text();
    const auto fromTo = [&](const ParamValue& before, const ParamValue& after) {
        const WString from = displayText(*param, before);
        const WString to = displayText(*param, after);
        return from == to ? L"Change " + name : name + L" " + from + L" to " + to;
    };

    if (fnType_ && !fnType_->same())
        return (fnType_->after == EffectValParamFnType::Keyframed ? L"Animate " : L"Stop animating ") + name;
    const KeyCounts keys = countKeys();
    if (keys.inserted > 0 && keys.erased > 0)
        return L"Move " + keyframes(std::max(keys.inserted, keys.erased)) + L" of " + name;
    if (keys.inserted > 0)
        return L"Add " + keyframes(keys.inserted) + L" to " + name;
    if (keys.erased > 0)
        return L"Remove " + keyframes(keys.erased) + L" from " + name;
    if (keys.changed == 1)
        return fromTo(valueAt(*param, keys.changedAt, false), valueAt(*param, keys.changedAt, true));
    if (keys.changed > 1)
        return L"Change " + keyframes(keys.changed) + L" of " + name;
    return constant_ ? fromTo(constant_->before, constant_->after) : L"Change " + name;
}

} // namespace workbench
