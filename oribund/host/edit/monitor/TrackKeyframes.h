#pragma once

#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/effects/EffectChange.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/keyframes/KeyframeSet.h"

#include <map>
#include <optional>
#include <vector>

namespace oribund
{

class TrackEffects;

/**
 * The keyframe sets of the effects that anybody has asked for, and the keyframes of whole tracks in edit time. What is
 * told of the effects only marks what is out of date; the next question brings it in step.
 */
class TrackKeyframes
{
public:
    using KeyframeSet = FXKeyframeHelpers::KeyframeSet;

    /** Both outlive this. */
    TrackKeyframes(const TrackEffects& effects, const KeyframeSelection& selection);
    ~TrackKeyframes();

    TrackKeyframes(const TrackKeyframes&) = delete;
    TrackKeyframes& operator=(const TrackKeyframes&) = delete;

    /** Always the same one as long as the effect is the same object. */
    const KeyframeSet& setOf(const Kt::Ptr<EffectInstance>& effect);

    /** The edit time of the keyframe of the track's effects that follows `editTime`, or of the one before. */
    std::optional<double> adjacent(const IdStamp& track, double editTime, bool forward);

    void note(const EffectChangeDescription& change);

private:
    using Effects = std::vector<Kt::Ptr<EffectInstance>>;

    /** What a track looked like when its times were collected. */
    struct Track {
        Effects effects;
        std::vector<NumRange<double>> regions;
        std::vector<double> times; // distinct, ascending
        bool checked = false;      // the effects and regions are those of the current time
        bool collected = false;    // the times are theirs
    };

    void check(const IdStamp& id, Track& track) const;
    void collect(Track& track);
    void forgetGone();

    const TrackEffects& effects_;
    const KeyframeSelection& selection_;
    std::map<IdStamp, KeyframeSet> sets_; // by effect
    std::map<IdStamp, Track> tracks_;
};

} // namespace oribund
