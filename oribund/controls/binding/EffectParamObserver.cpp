#include "oribund/controls/binding/EffectParamObserver.h"

namespace oribund
{

template <class P>
EffectParamObserver<P>::EffectParamObserver(ParamRefreshTarget& target)
    : target_(target)
    , fnTypeCallback_(this, &EffectParamObserver::handleFnType)
    , graphCallback_(this, &EffectParamObserver::handleGraph)
    , constantCallback_(this, &EffectParamObserver::handleConstant)
{
}

template <class P>
EffectParamObserver<P>::~EffectParamObserver() = default;

template <class P>
void EffectParamObserver<P>::registerWith(const Kt::Ptr<EffectValParam<P>>& param)
{
    fnTypeCallback_.detach();
    graphCallback_.detach();
    constantCallback_.detach();
    param_ = param;
    if (!param_)
        return;
    fnTypeCallback_.attach(param_->fnTypeServer().notifier());
    if (Graph1dBase* const graph = param_->graph())
        graphCallback_.attach(graph->changes());
    constantCallback_.attach(param_->constantServer().notifier());
}

template <class P>
int EffectParamObserver<P>::handleFnType(const ValServerEvent<EffectValParamFnType>& event)
{
    if (event.kind == ValEventKind::Changed)
        target_.handleParamChange();
    return 0;
}

template <class P>
int EffectParamObserver<P>::handleGraph(const ValServerEvent<ChangeDescription<Graph1dBase>>& event)
{
    if (event.kind == ValEventKind::Changed)
        target_.handleParamChange();
    return 0;
}

template <class P>
int EffectParamObserver<P>::handleConstant(const ValServerEvent<P>& event)
{
    if (event.kind == ValEventKind::Changed)
        target_.handleParamChange();
    return 0;
}

ORIBUND_FOR_PARAM_TYPES(ORIBUND_DEFINE_FOR_TYPE, EffectParamObserver)

} // namespace oribund
