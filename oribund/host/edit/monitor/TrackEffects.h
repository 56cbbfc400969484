#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/base/iVirtual.h"

#include <vector>

namespace oribund
{

class EffectInstance;

/** What a host answers about the effects on the tracks of one viewed edit. Times are edit times in seconds. */
class ORIBUND_API TrackEffects : public iVirtual
{
public:
    ~TrackEffects() override;

    /**
     * The effects of a track that panels show, in the order in which they are applied: those at work at the current
     * time or, where the host lets the user select something on the track, those of the selection.
     */
    virtual std::vector<Kt::Ptr<EffectInstance>> getEffects(const IdStamp& track) const = 0;

    /** All tracks that may have effects, top first. */
    virtual std::vector<IdStamp> getTracks() const = 0;

    /**
     * The effects of all tracks that run at an edit time, ends included, whatever is selected. By them the selection of
     * keyframes finds its way where a host divides or joins what effects are on. None by default: it is dropped there.
     */
    virtual std::vector<Kt::Ptr<EffectInstance>> getEffectsAt(double editTime) const;

    /** Whether a change of several parts is being made, of which only some can be seen yet. The last one is told
        afterwards. */
    virtual bool isChanging() const { return false; }

    /** The track of an effect, mask or embedded effect that getEffects() gives for one; not valid for any other. */
    virtual IdStamp getTrackOf(const IdStamp& effect) const;

    /** What a person calls the track. Empty by default, and for one that there is not. */
    virtual WString getTrackName(const IdStamp& track) const;

    /** As getEffects(), without what a host has left empty. The library asks by this. */
    std::vector<Kt::Ptr<EffectInstance>> effectsOf(const IdStamp& track) const;

    /** The same, with its mask and its embedded effects behind each: all that has keyframes. */
    std::vector<Kt::Ptr<EffectInstance>> effectsAndPartsOf(const IdStamp& track) const;

    /** The same of getEffectsAt(). */
    std::vector<Kt::Ptr<EffectInstance>> effectsAndPartsAt(double editTime) const;

    /**
     * The effect of that id, at whatever time: one of a track, or a mask or embedded effect of one at any depth
     * (EffectInstance::findWithin()). Empty when the edit holds none.
     */
    virtual Kt::Ptr<EffectInstance> findEffect(const IdStamp& effect) const = 0;

    /** The region over which an effect, mask or embedded effect runs; empty (0, 0) for an unknown one. */
    virtual NumRange<double> getEditRegion(const IdStamp& effect) const = 0;

    /** The span of the regions of all effects that getEffects() gives; empty (0, 0) without any. */
    NumRange<double> getCompoundEditRegion(const IdStamp& track) const;
};

} // namespace oribund
