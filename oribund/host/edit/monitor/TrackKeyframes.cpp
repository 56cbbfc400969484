#include "oribund/host/edit/monitor/TrackKeyframes.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/monitor/KeyframeChanges.h"
#include "oribund/host/edit/monitor/TrackEffects.h"
#include "oribund/host/effects/curves/SortedTimes.h"

#include <cmath>

namespace oribund
{

namespace
{

/** As far as sums and products of times are exact. */
double toleranceAt(double editTime)
{
    return kValueTolerance * std::max(1.0, std::abs(editTime));
}

} // namespace

TrackKeyframes::TrackKeyframes(const TrackEffects& effects, const KeyframeSelection& selection)
    : effects_(effects)
    , selection_(selection)
{
}

TrackKeyframes::~TrackKeyframes()
{
    for (auto& [id, set] : sets_)
        set.forget();
}

const TrackKeyframes::KeyframeSet& TrackKeyframes::setOf(const Kt::Ptr<EffectInstance>& effect)
{
    KeyframeSet& set = sets_[effect->id()];
    if (set.effect() != effect) {
        set.forget();
        set = KeyframeSet(effect, selection_);
    }
    return set;
}

std::optional<double> TrackKeyframes::adjacent(const IdStamp& id, double editTime, bool forward)
{
    Track& track = tracks_[id];
    if (!track.checked)
        check(id, track);
    if (!track.collected)
        collect(track);
    const double tolerance = toleranceAt(editTime);
    return forward ? firstLater(track.times, editTime, tolerance) : lastEarlier(track.times, editTime, tolerance);
}

void TrackKeyframes::check(const IdStamp& id, Track& track) const
{
    Effects effects = effects_.effectsAndPartsOf(id);
    std::vector<NumRange<double>> regions;
    regions.reserve(effects.size());
    for (const auto& effect : effects)
        regions.push_back(effects_.getEditRegion(effect->id()));
    if (effects != track.effects || regions != track.regions)
        track.collected = false;
    track.effects = std::move(effects);
    track.regions = std::move(regions);
    track.checked = true;
}

void TrackKeyframes::collect(Track& track)
{
    track.times.clear();
    for (std::size_t i = 0; i < track.effects.size(); ++i) {
        for (const double time : setOf(track.effects[i]).times())
            track.times.push_back(toEditTime(track.regions[i], FXTime{time}));
    }
    sortDistinct(track.times, kValueTolerance);
    track.collected = true;
}

void TrackKeyframes::note(const EffectChangeDescription& change)
{
    for (auto& [id, track] : tracks_) {
        track.checked = false;
        track.collected = track.collected && !affectsKeyframes(change);
    }
    if (!affectsKeyframes(change))
        return;
    if (affectsEffects(change))
        forgetGone();
    for (auto& [id, set] : sets_) {
        if (change.effect.isWildcard() || change.effect == id)
            set.invalidate();
    }
}

void TrackKeyframes::forgetGone()
{
    for (auto entry = sets_.begin(); entry != sets_.end();) {
        const bool gone = effects_.findEffect(entry->first) != entry->second.effect();
        if (gone)
            entry->second.forget();
        entry = gone ? sets_.erase(entry) : std::next(entry);
    }
    for (auto& [id, track] : tracks_)
        track = {};
}

} // namespace oribund
