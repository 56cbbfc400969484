#pragma once

#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

/** Finds parameters of an effect one after the other: those that come in the order of its list at once. */
class ParamWalk
{
public:
    /** The effect outlives the walk. */
    explicit ParamWalk(const EffectInstance& effect)
        : effect_(effect)
    {
    }

    /** -1 when there is none of that id. */
    int indexOf(const IdStamp& id)
    {
        const auto expected = effect_.paramAt(next_);
        const int index = expected && expected->id() == id ? next_ : effect_.indexOfParam(id);
        next_ = index + 1;
        return index;
    }

    /** Empty when there is none. */
    EffectInstance::ParamPtr find(const IdStamp& id) { return effect_.paramAt(indexOf(id)); }

private:
    const EffectInstance& effect_;
    int next_ = 0;
};

} // namespace oribund
