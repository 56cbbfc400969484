#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/notify/MethodCallback.h"

namespace oribund
{

/** Who is told by an EffectParamObserver that its parameter has changed. */
class ParamRefreshTarget
{
public:
    virtual void handleParamChange() = 0;

protected:
    ~ParamRefreshTarget() = default;
};

/**
 * Listens to one parameter of type `P`: whether it is animated, its keyframes, its constant. The registrations are
 * guards: what is destroyed hears nothing any more.
 */
template <class P>
class ORIBUND_API EffectParamObserver
{
public:
    /** Registered on nothing yet. The target owns this, or lives longer. */
    explicit EffectParamObserver(ParamRefreshTarget& target);
    ~EffectParamObserver();

    EffectParamObserver(const EffectParamObserver&) = delete;
    EffectParamObserver& operator=(const EffectParamObserver&) = delete;

    /** Leaves the parameter that it is registered on and registers on another; an empty one for none. */
    void registerWith(const Kt::Ptr<EffectValParam<P>>& param);

    const Kt::Ptr<EffectValParam<P>>& param() const { return param_; }

private:
    template <class T>
    int handleEvent(const ValServerEvent<T>& event);

    template <class T>
    using Callback = FixedMethodCallback<EffectParamObserver, ValServerEvent<T>, &EffectParamObserver::handleEvent<T>>;

    ParamRefreshTarget& target_;
    Kt::Ptr<EffectValParam<P>> param_;
    Callback<EffectValParamFnType> fnTypeCallback_;
    Callback<ChangeDescription<Graph1dBase>> graphCallback_;
    Callback<P> constantCallback_;
};

ORIBUND_FOR_PARAM_TYPES(ORIBUND_DECLARE_FOR_TYPE, EffectParamObserver)

} // namespace oribund
