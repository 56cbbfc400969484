#include "oribund/host/edit/monitor/FollowedSelection.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/monitor/TrackEffects.h"
#include "oribund/host/effects/curves/Graph1d.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"

#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

Kt::Ptr<EffectValParamBase> paramOf(const Kt::Ptr<EffectInstance>& effect, const IdStamp& param)
{
    return effect ? effect->findParam(param) : Kt::Ptr<EffectValParamBase>();
}

double valueAt(const Graph1dBase& graph, int index)
{
    return graph.channel(0).valueAt(index);
}

/** The keyframe of a graph that stands at an edit time and is within its effect; -1 for none. */
int indexAtEditTime(const Graph1dBase& graph, const NumRange<double>& region, double editTime)
{
    // A host may keep keyframes in frames: the way there and back costs more than the tolerance of effect times.
    constexpr double kSeconds = 1e-6;
    const int index = graph.nearestIndex(toFXTime(region, editTime).normalised);
    const bool found = index >= 0 && isWithinEffect(graph.timeAt(index)) &&
                       std::abs(toEditTime(region, FXTime{graph.timeAt(index)}) - editTime) <= kSeconds;
    return found ? index : -1;
}

} // namespace

bool FollowedSelection::set(KeyframeSelection selection)
{
    if (selection == selection_)
        return false;
    const KeyframeSelection before = std::exchange(selection_, std::move(selection));
    std::erase_if(marks_, [this](const auto& entry) { return !selection_.all().contains(entry.first); });
    for (const auto& [key, times] : selection_.all()) {
        const auto was = before.all().find(key);
        if (was == before.all().end() || was->second != times)
            remember(key);
    }
    return true;
}

void FollowedSelection::remember(const Key& key)
{
    Marks& seen = marks_[key];
    seen = {};
    const Kt::Ptr<EffectInstance> effect = effects_.findEffect(key.first);
    const Kt::Ptr<EffectValParamBase> param = paramOf(effect, key.second);
    const Graph1dBase* const graph = animatedGraph(param.get());
    if (!graph)
        return;
    seen.effectTag = effect->tagTypeId();
    seen.region = effects_.getEditRegion(key.first);
    seen.graphSize = graph->size();
    for (const double time : selection_.times(key.first, key.second)) {
        const int index = graph->indexAt(time);
        seen.marks.push_back({index, index >= 0 ? valueAt(*graph, index) : 0.0});
    }
}

void FollowedSelection::follow(const IdStamp& effect, const IdStamp& param)
{
    std::vector<Key> concerned;
    for (const auto& [key, times] : selection_.all()) {
        if (KeyframeSelection::matches(key, effect, param))
            concerned.push_back(key);
    }
    if (concerned.empty())
        return;
    KeyframeSelection found = selection_;
    found.clear(effect, param);
    for (const Key& key : concerned) {
        if (!find(key, found)) {
            set({});
            return;
        }
    }
    set(std::move(found));
    // Values and effects may be others even where the times are the same.
    for (const Key& key : concerned) {
        if (marks_.contains(key))
            remember(key);
    }
}

/** Adds to `found` the keyframes of one parameter as they are now. False when one of them is lost. */
bool FollowedSelection::find(const Key& key, KeyframeSelection& found) const
{
    const Kt::Ptr<EffectInstance> effect = effects_.findEffect(key.first);
    if (!effect) {
        // It may have become a part of another one; else the keyframes have gone with it.
        KeyframeSelection together = found;
        if (findByEditTime(key, together))
            found = std::move(together);
        return true;
    }
    const Kt::Ptr<EffectValParamBase> param = paramOf(effect, key.second);
    const Graph1dBase* const graph = animatedGraph(param.get());
    if (!graph)
        return true;
    const double change = effects_.getEditRegion(key.first).length() - marks_.at(key).region.length();
    if (std::abs(change) <= kValueTolerance)
        return findInPlace(key, *graph, found);
    return findByEditTime(key, found) || findByIndex(key, *graph, found);
}

bool FollowedSelection::findInPlace(const Key& key, const Graph1dBase& graph, KeyframeSelection& found) const
{
    std::vector<double> there;
    const auto times = selection_.times(key.first, key.second);
    for (const double time : times) {
        if (isWithinEffect(time) && graph.indexAt(time) >= 0)
            there.push_back(time);
    }
    const bool all = there.size() == times.size();
    if (all || !findByIndex(key, graph, found))
        found.assign(key.first, key.second, std::move(there));
    return true;
}

/** For keyframes that have other times in the same order, such as after an undo. */
bool FollowedSelection::findByIndex(const Key& key, const Graph1dBase& graph, KeyframeSelection& found) const
{
    const Marks& seen = marks_.at(key);
    if (graph.size() != seen.graphSize)
        return false;
    std::vector<double> times;
    for (const Mark& mark : seen.marks) {
        if (mark.index < 0 || valueAt(graph, mark.index) != mark.value || !isWithinEffect(graph.timeAt(mark.index)))
            return false;
        times.push_back(graph.timeAt(mark.index));
    }
    found.assign(key.first, key.second, std::move(times));
    return true;
}

/** Where effects have other ends, each keyframe is at the same picture still, be it of another effect by now. */
bool FollowedSelection::findByEditTime(const Key& key, KeyframeSelection& found) const
{
    KeyframeSelection all = found;
    const auto param = paramOf(effects_.findEffect(key.first), key.second);
    const Graph1dBase* const graph = animatedGraph(param.get());
    const NumRange<double> region = effects_.getEditRegion(key.first);
    const auto times = selection_.times(key.first, key.second);
    for (std::size_t i = 0; i < times.size(); ++i) {
        const double editTime = toEditTime(marks_.at(key).region, FXTime{times[i]});
        const int index = graph ? indexAtEditTime(*graph, region, editTime) : -1;
        if (index >= 0)
            all.set(key.first, key.second, graph->timeAt(index), true);
        else if (!findElsewhere(key, i, editTime, all))
            return false;
    }
    found = std::move(all);
    return true;
}

/** In the effect of the same kind that runs there now. False when it is not clear which one that is. */
bool FollowedSelection::findElsewhere(const Key& key, std::size_t which, double editTime,
                                      KeyframeSelection& found) const
{
    const Marks& seen = marks_.at(key);
    IdStamp heir;
    double time = 0.0;
    for (const auto& effect : effects_.effectsAndPartsAt(editTime)) {
        const auto param = paramOf(effect, key.second);
        const Graph1dBase* const graph = animatedGraph(param.get());
        const NumRange<double> region = effects_.getEditRegion(effect->id());
        const bool ranBeside = region == seen.region;
        if (effect->id() == key.first || effect->tagTypeId() != seen.effectTag || !graph || ranBeside)
            continue;
        const int index = indexAtEditTime(*graph, region, editTime);
        if (index < 0 || valueAt(*graph, index) != seen.marks[which].value)
            continue;
        if (heir.valid())
            return false;
        heir = effect->id();
        time = graph->timeAt(index);
    }
    if (heir.valid())
        found.set(heir, key.second, time, true);
    return heir.valid();
}

} // namespace oribund
