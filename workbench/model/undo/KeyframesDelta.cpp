#include "workbench/model/undo/KeyframesDelta.h"

#include "oribund/host/effects/params/EffectValParamBase.h"
#include "oribund/host/effects/params/ParamTraits.h"

#include <algorithm>
#include <limits>
#include <set>

namespace workbench
{

using oribund::Keyframe;
using oribund::ParamValue;

namespace
{
/** The first keyframe that is not before `fxTime`. */
template <class List>
auto placeOf(List& keyframes, double fxTime)
{
    return std::lower_bound(keyframes.begin(), keyframes.end(), fxTime,
                            [](const Keyframe& keyframe, double wanted) { return keyframe.time < wanted; });
}

void copyKeyframes(const oribund::Graph1dBase& graph, std::vector<ChannelData>& channels)
{
    channels.resize(static_cast<std::size_t>(graph.channelCount()));
    for (std::size_t i = 0; i < channels.size(); ++i)
        channels[i] = graph.keyframes(static_cast<int>(i));
}
} // namespace

KeyframesDelta::Sides& KeyframesDelta::keyAt(int channel, double fxTime, const std::optional<Keyframe>& before)
{
    return singles_.try_emplace({channel, fxTime}, Sides{before, before}).first->second;
}

void KeyframesDelta::inserted(int channel, const Keyframe& keyframe)
{
    if (lists_) {
        ChannelData& list = lists_->after[static_cast<std::size_t>(channel)];
        list.insert(placeOf(list, keyframe.time), keyframe);
    } else {
        keyAt(channel, keyframe.time, {}).after = keyframe;
    }
}

void KeyframesDelta::erased(int channel, const Keyframe& keyframe)
{
    if (lists_) {
        ChannelData& list = lists_->after[static_cast<std::size_t>(channel)];
        list.erase(placeOf(list, keyframe.time));
        return;
    }
    Sides& sides = keyAt(channel, keyframe.time, keyframe);
    sides.after.reset();
    // A keyframe that is dragged leaves nothing where it only passed by.
    if (!sides.before)
        singles_.erase({channel, keyframe.time});
}

void KeyframesDelta::changed(int channel, const Keyframe& before, const Keyframe& after)
{
    if (before.time != after.time) {
        erased(channel, before);
        inserted(channel, after);
    } else if (lists_) {
        *placeOf(lists_->after[static_cast<std::size_t>(channel)], after.time) = after;
    } else {
        keyAt(channel, before.time, before).after = after;
    }
}

void KeyframesDelta::manyChanging(const oribund::Graph1dBase& graph)
{
    if (lists_)
        return;
    Lists& lists = lists_.emplace();
    copyKeyframes(graph, lists.before);
    for (int channel = 0; channel < graph.channelCount() && !singles_.empty(); ++channel) {
        ChannelData& list = lists.before[static_cast<std::size_t>(channel)];
        list = beforeSingles(channel, list);
    }
    singles_.clear();
}

void KeyframesDelta::manyChanged(const oribund::Graph1dBase& graph)
{
    copyKeyframes(graph, lists_->after);
}

/** A channel as it was before what is held of single keyframes. */
ChannelData KeyframesDelta::beforeSingles(int channel, const ChannelData& now) const
{
    ChannelData was;
    auto kept = now.begin();
    const auto keepUntil = [&](double fxTime) {
        for (; kept != now.end() && kept->time < fxTime; ++kept)
            was.push_back(*kept);
    };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const auto end = singles_.lower_bound({channel + 1, -kInfinity});
    for (auto single = singles_.lower_bound({channel, -kInfinity}); single != end; ++single) {
        keepUntil(single->first.second);
        if (single->second.after)
            ++kept;
        if (single->second.before)
            was.push_back(*single->second.before);
    }
    keepUntil(kInfinity);
    return was;
}

/** The moves, where the lists differ in nothing but times. */
std::optional<KeyframesDelta::Times> KeyframesDelta::movesOf(const Lists& lists)
{
    for (std::size_t channel = 0; channel < lists.before.size(); ++channel) {
        const auto sameButTime = [](Keyframe before, const Keyframe& after) {
            before.time = after.time;
            return before == after;
        };
        const ChannelData& before = lists.before[channel];
        const ChannelData& after = lists.after[channel];
        if (!std::equal(before.begin(), before.end(), after.begin(), after.end(), sameButTime))
            return {};
    }
    Times times;
    const ChannelData& before = lists.before.front();
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (const double now = lists.after.front()[i].time; before[i].time != now) {
            times.indices.push_back(static_cast<int>(i));
            times.before.push_back(before[i].time);
            times.after.push_back(now);
        }
    }
    return times;
}

void KeyframesDelta::finish()
{
    moves_ = lists_ ? movesOf(*lists_) : std::nullopt;
    if (moves_)
        lists_.reset();
}

void KeyframesDelta::restore(oribund::EffectValParamBase& param, bool toAfter) const
{
    if (moves_)
        param.graph()->setKeyframeTimes(moves_->indices, toAfter ? moves_->after : moves_->before);
    else if (lists_)
        param.graph()->setKeyframes(toAfter ? lists_->after : lists_->before);
    else
        restoreSingles(param, toAfter);
}

void KeyframesDelta::restoreSingles(oribund::EffectValParamBase& param, bool toAfter) const
{
    // What goes makes room for what comes: a keyframe may have been moved by less than two of them may lie apart.
    for (const auto& [place, sides] : singles_) {
        const auto& now = toAfter ? sides.before : sides.after;
        const auto& wanted = toAfter ? sides.after : sides.before;
        if (now && !wanted)
            param.restoreKeyframeErased(place.first, place.second);
    }
    for (const auto& [place, sides] : singles_) {
        const auto& now = toAfter ? sides.before : sides.after;
        const auto& wanted = toAfter ? sides.after : sides.before;
        if (!now && wanted)
            param.restoreKeyframeInserted(place.first, *wanted);
        else if (now && wanted && *now != *wanted)
            param.restoreKeyframeChanged(place.first, *wanted);
    }
}

bool KeyframesDelta::isNull() const
{
    if (moves_)
        return moves_->indices.empty();
    if (lists_)
        return lists_->before == lists_->after;
    return std::all_of(singles_.begin(), singles_.end(), [](const auto& entry) { return entry.second.same(); });
}

KeyframesDelta::Counts KeyframesDelta::count() const
{
    if (moves_)
        return {static_cast<int>(moves_->indices.size())};
    return lists_ ? countLists(*lists_) : countSingles();
}

KeyframesDelta::Counts KeyframesDelta::countLists(const Lists& lists)
{
    Counts counts;
    const ChannelData& before = lists.before.front();
    const ChannelData& after = lists.after.front();
    counts.inserted = static_cast<int>(std::max(std::ssize(after) - std::ssize(before), std::ptrdiff_t(0)));
    counts.erased = static_cast<int>(std::max(std::ssize(before) - std::ssize(after), std::ptrdiff_t(0)));
    if (before.size() != after.size())
        return counts;
    for (std::size_t i = 0; i < before.size(); ++i) {
        counts.moved += before[i].time != after[i].time;
        bool same = true;
        for (std::size_t channel = 0; channel < lists.before.size(); ++channel)
            same = same && lists.before[channel][i] == lists.after[channel][i];
        if (!same && counts.changed++ == 0)
            counts.changedAt = after[i].time;
    }
    return counts;
}

KeyframesDelta::Counts KeyframesDelta::countSingles() const
{
    Counts counts;
    std::set<double> changed;
    for (const auto& [place, sides] : singles_) {
        const bool first = place.first == 0;
        counts.inserted += first && !sides.before && sides.after;
        counts.erased += first && sides.before && !sides.after;
        if (sides.before && sides.after && !sides.same())
            changed.insert(place.second);
    }
    counts.changed = static_cast<int>(changed.size());
    if (!changed.empty())
        counts.changedAt = *changed.begin();
    if (counts.inserted > 0 && counts.erased > 0) {
        // One that has moved to where another was has changed that one.
        counts.moved = std::max(counts.inserted, counts.erased) + counts.changed;
        counts.inserted = counts.erased = 0;
    }
    return counts;
}

ParamValue KeyframesDelta::valueAt(const oribund::EffectValParamBase& param, double fxTime, bool after) const
{
    ParamValue value = param.valueAt(fxTime);
    for (const auto& [place, sides] : singles_)
        if (place.second == fxTime && sides.before && sides.after)
            setChannel(value, static_cast<std::size_t>(place.first), after ? sides.after->value : sides.before->value);
    for (std::size_t channel = 0; lists_ && channel < lists_->after.size(); ++channel) {
        const ChannelData& list = after ? lists_->after[channel] : lists_->before[channel];
        if (const auto place = placeOf(list, fxTime); place != list.end() && place->time == fxTime)
            setChannel(value, channel, place->value);
    }
    return value;
}

} // namespace workbench
