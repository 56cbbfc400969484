#pragma once

#include "oribund/host/effects/EffectChange.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/notify/MethodCallback.h"

#include <functional>
#include <memory>

namespace workbench
{

/** Follows one parameter in all that can change about it, until it is destroyed. The parameter outlives it. */
class ParamWatch
{
public:
    using Told = std::function<void(oribund::EffectChangeCode)>;

    virtual ~ParamWatch() = default;

    static std::unique_ptr<ParamWatch> make(oribund::EffectValParamBase& param, Told told);

protected:
    ParamWatch() = default;
};

} // namespace workbench
