#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/keyframes/KeyframeClip.h"

#include <vector>

namespace oribund
{

class KeyframeSelection;

/**
 * Finds parameters for the keyframes of a clip, and puts them there. Offer the effects, place the clip, then apply.
 *
 * A parameter takes keyframes of its own type only, limited to its range, and becomes animated where it is not. A
 * keyframe takes the place of those that are nearer than half a frame. What would lie outside its effect is left out.
 */
class ORIBUND_API KeyframePaste
{
public:
    /** The earliest keyframe comes to the edit time `at`; `frame` in seconds. The clip outlives this. */
    KeyframePaste(const KeyframeClip& clip, double at, double frame);
    ~KeyframePaste();

    /** An effect that may take keyframes, and the region of the edit over which it runs. */
    void offer(const Kt::Ptr<EffectInstance>& effect, const NumRange<double>& region);

    /** Each part goes to its own parameter, else to one that is like it. No parameter takes two of them. */
    void place();

    /** All that fits goes to one parameter. */
    void placeAllIn(const IdStamp& effect, const IdStamp& param);

    /** How many keyframes have found a place. */
    int count() const;

    /** Edits the parameters, and selects what came there. */
    void apply(KeyframeSelection& pasted) const;

private:
    struct Offer {
        Kt::Ptr<EffectInstance> effect;
        NumRange<double> region;
    };

    /** Keyframes in the effect time of the parameter that they are going to. */
    struct Landing {
        Kt::Ptr<EffectInstance> effect;
        Kt::Ptr<EffectValParamBase> param;
        double reach; ///< within which it replaces what is there
        std::vector<std::vector<Keyframe>> channels;
    };

    using Fits = bool (*)(const KeyframeClip::Part&, const EffectInstance&, const EffectValParamBase&);

    bool placeWhere(const KeyframeClip::Part& part, Fits fits);
    bool isTaken(const EffectValParamBase& param) const;
    bool isTaken(const EffectValParamBase& param, double fxTime) const;
    void land(const Offer& offer, const Kt::Ptr<EffectValParamBase>& param, const KeyframeClip::Part& part);
    static void write(const Landing& landing);

    const KeyframeClip& clip_;
    double at_;
    double frame_;
    std::vector<Offer> offers_;
    std::vector<Landing> landings_;
};

} // namespace oribund
