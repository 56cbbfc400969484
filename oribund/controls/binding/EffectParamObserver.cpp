#include "oribund/controls/binding/EffectParamObserver.h"

namespace oribund
{

template <class P>
EffectParamObserver<P>::EffectParamObserver(ParamRefreshTarget& target)
    : target_(target)
    , fnTypeCallback_(this)
    , graphCallback_(this)
    , constantCallback_(this)
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
template <class T>
int EffectParamObserver<P>::handleEvent(const ValServerEvent<T>& event)
{
    if (event.kind == ValEventKind::Changed)
        target_.handleParamChange();
    return 0;
}

ORIBUND_FOR_PARAM_TYPES(ORIBUND_DEFINE_FOR_TYPE, EffectParamObserver)

} // namespace oribund
