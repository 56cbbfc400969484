#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"

namespace oribund
{

class EffectInstance;
class EffectValParamBase;

/**
 * Finds one parameter in an effect by its id, and remembers where it was: as long as it stays there, finding it again
 * is one comparison. Copes with parameters being inserted, removed and replaced.
 */
class ORIBUND_API ParamFinder
{
public:
    explicit ParamFinder(const IdStamp& paramId)
        : paramId_(paramId)
    {
    }

    const IdStamp& paramId() const { return paramId_; }

    /** Null when the effect is empty or has no such parameter. */
    EffectValParamBase* find(const Kt::Ptr<EffectInstance>& effect);

private:
    int paramIndex_ = -1; // -1: to be searched for
    IdStamp paramId_;
};

} // namespace oribund
