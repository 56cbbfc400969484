#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/effects/curves/Keyframe.h"

#include <cstddef>
#include <span>
#include <vector>

namespace oribund
{

class EffectInstance;

/**
 * Copied keyframes, with what it takes to find a parameter for them. Plain values: a clip outlives the effects that it
 * was copied from, and the edit. All times, those of tangents included, are seconds from the earliest keyframe.
 */
class ORIBUND_API KeyframeClip
{
public:
    /** The keyframes of one parameter. */
    struct Part {
        IdStamp effect;
        String effectTag; ///< what kind of effect it is
        IdStamp param;
        String paramName;
        std::size_t valueType = 0; ///< as ParamValue numbers the types
        std::vector<std::vector<Keyframe>> channels;
    };

    /**
     * Adds keyframes of a parameter of an effect that runs over `region`, in edit time; `origin` is the edit time of
     * the earliest keyframe of the clip. What is not there is left out.
     */
    void add(const EffectInstance& effect, const NumRange<double>& region, double origin, const IdStamp& param,
             std::span<const double> times);

    const std::vector<Part>& parts() const { return parts_; }

    bool empty() const { return parts_.empty(); }

    /** How many keyframes. */
    int size() const;

private:
    std::vector<Part> parts_;
};

} // namespace oribund
