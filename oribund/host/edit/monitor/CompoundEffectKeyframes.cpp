#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"

#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/FollowedSelection.h"
#include "oribund/host/edit/monitor/KeyframeChanges.h"
#include "oribund/host/edit/monitor/TrackKeyframes.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"

#include <utility>

namespace oribund
{

namespace
{

void addAll(KeyframeSelection& selection, const EffectInstance& effect, const IdStamp& which)
{
    forEachAnimated(effect, [&](const EffectValParamBase& param, const Graph1dBase& graph) {
        if (!KeyframeSelection::matches({effect.id(), param.id()}, effect.id(), which))
            return;
        const KeyframeSpan span(graph);
        std::vector<double> times;
        for (int i = span.first; i < span.end; ++i)
            times.push_back(graph.timeAt(i));
        selection.assign(effect.id(), param.id(), std::move(times));
    });
}

} // namespace

CompoundEffectKeyframes::CompoundEffectKeyframes(Vob& vob)
    : vob_(&vob)
    , selection_(std::make_unique<FollowedSelection>(*this))
    , keyframes_(std::make_unique<TrackKeyframes>(*this, selection_->get()))
{
}

CompoundEffectKeyframes::~CompoundEffectKeyframes() = default;

void CompoundEffectKeyframes::populateKeyframesForCompoundEffect(const IdStamp& track, KeyframeSets& sets)
{
    KeyframeSets found;
    for (const auto& effect : effectsAndPartsOf(track))
        found.emplace(effect, keyframes_->setOf(effect));
    sets.swap(found);
}

int CompoundEffectKeyframes::getNumKeyframedParams(const IdStamp& track)
{
    int count = 0;
    for (const auto& effect : effectsAndPartsOf(track))
        count += keyframes_->setOf(effect).keyframedParamCount();
    return count;
}

const KeyframeSelection& CompoundEffectKeyframes::keyframeSelection() const
{
    return selection_->get();
}

void CompoundEffectKeyframes::selectKeyframe(const FXKeyframeHelpers::FXKeyframe& keyframe, bool select)
{
    const Kt::Ptr<EffectInstance> effect = findEffect(keyframe.effect);
    const Graph1dBase* const graph = effect ? animatedGraph(effect->findParam(keyframe.param).get()) : nullptr;
    const int index = graph && isWithinEffect(keyframe.time) ? graph->indexAt(keyframe.time) : -1;
    if (index < 0)
        return;
    KeyframeSelection selection = keyframeSelection();
    selection.set(keyframe.effect, keyframe.param, graph->timeAt(index), select);
    if (selection_->set(std::move(selection)))
        tellSelection(keyframe.effect, keyframe.param);
}

/** Those that panels show, of all tracks or with one id. */
std::vector<Kt::Ptr<EffectInstance>> CompoundEffectKeyframes::effectsMeant(const IdStamp& effect) const
{
    std::vector<Kt::Ptr<EffectInstance>> meant;
    if (!effect.isWildcard()) {
        if (const auto found = findEffect(effect))
            meant.push_back(found);
        return meant;
    }
    for (const IdStamp& track : getTracks()) {
        const auto effects = effectsAndPartsOf(track);
        meant.insert(meant.end(), effects.begin(), effects.end());
    }
    return meant;
}

void CompoundEffectKeyframes::selectAllKeyframes(const IdStamp& effect, const IdStamp& param, bool select)
{
    KeyframeSelection selection = keyframeSelection();
    selection.clear(effect, param);
    if (select) {
        for (const auto& meant : effectsMeant(effect))
            addAll(selection, *meant, param);
    }
    if (selection_->set(std::move(selection)))
        tellSelection(effect, param);
}

int CompoundEffectKeyframes::getNumKeyframesSelected(const IdStamp& effect, const IdStamp& param) const
{
    return keyframeSelection().count(effect, param);
}

std::optional<double> CompoundEffectKeyframes::findAdjacentKeyframe(const IdStamp& track, bool forward)
{
    return vob_ ? keyframes_->adjacent(track, vob_->getCurrentTime(), forward) : std::nullopt;
}

bool CompoundEffectKeyframes::moveToAdjacentKeyframe(const IdStamp& track, bool forward)
{
    const std::optional<double> time = findAdjacentKeyframe(track, forward);
    if (time)
        vob_->setCurrentTime(*time);
    return time.has_value();
}

void CompoundEffectKeyframes::noteChange(const EffectChangeDescription& change)
{
    keyframes_->note(change);
    if (affectsKeyframes(change) || change.code == EffectChangeCode::ParamValueChanged) {
        changed_.emplace_back(change.effect, change.param);
        followKeyframes();
    }
}

/** Once all of a change can be seen. */
void CompoundEffectKeyframes::followKeyframes()
{
    if (editing_ > 0 || changed_.empty() || isChanging())
        return;
    const auto changed = std::exchange(changed_, {});
    if (changed.size() == 1)
        selection_->follow(changed.front().first, changed.front().second);
    else
        selection_->follow(IdStamp::wildcard(), {});
}

void CompoundEffectKeyframes::tellSelection(const IdStamp& effect, const IdStamp& param)
{
    EffectChangeDescription change;
    change.code = EffectChangeCode::SelectionChanged;
    change.flags = EffectChangeDescription::kSelectionOnly;
    change.effect = effect;
    change.param = param;
    relay_.tell(change);
}

} // namespace oribund
