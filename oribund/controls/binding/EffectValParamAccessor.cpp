#include "oribund/controls/binding/EffectValParamAccessor.h"

#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

template <class P>
EffectValParam<P>* EffectValParamAccessor<P>::find(const Kt::Ptr<EffectInstance>& effect)
{
    // An id names one parameter for life, and a parameter never changes its type; but a project may be wrong.
    return dynamic_cast<EffectValParam<P>*>(finder_.find(effect));
}

template <class P>
std::optional<P> EffectValParamAccessor<P>::getValue(const Kt::Ptr<EffectInstance>& effect, double fxTime)
{
    const EffectValParam<P>* const param = find(effect);
    return param ? std::optional<P>(param->getValue(fxTime)) : std::nullopt;
}

template <class P>
bool EffectValParamAccessor<P>::setValue(const Kt::Ptr<EffectInstance>& effect, const P& value, double fxTime,
                                         ChangeKind kind)
{
    // Observers may remove the parameter from its effect while they are told.
    const Kt::Ptr<EffectValParam<P>> param = getParam(effect);
    if (!param)
        return false;
    if (param->functionType() == EffectValParamFnType::Constant)
        return param->setConstant(value, kind);
    if constexpr (isNumericParam<P>) {
        if (param->functionType() == EffectValParamFnType::Keyframed) {
            const int index = param->graph()->indexAt(fxTime);
            return index >= 0 ? param->setKeyframeValueAt(index, value, kind)
                              : addKeyframeTo(*param, value, fxTime, kind) >= 0;
        }
    }
    return false;
}

template <class P>
int EffectValParamAccessor<P>::addKeyframe(const Kt::Ptr<EffectInstance>& effect, const P& value, double fxTime,
                                           ChangeKind kind)
{
    const Kt::Ptr<EffectValParam<P>> param = getParam(effect);
    if (!param || !param->graph())
        return -1;
    return addKeyframeTo(*param, value, fxTime, kind);
}

template <class P>
int EffectValParamAccessor<P>::addKeyframeTo(EffectValParam<P>& param, const P& value, double fxTime, ChangeKind kind)
{
    if constexpr (isNumericParam<P>) {
        if (!usableParamValue(value) || param.graph()->indexAt(fxTime) >= 0)
            return -1;
        const GraphBatch batch(*param.graph(), BatchReason::AddKeyframe, BatchReason::EndAddKeyframe, kind);
        const int index = param.graph()->addKeyframe(fxTime, kind);
        if (index >= 0)
            param.setKeyframeValueAt(index, value, ChangeKind::Single);
        return index;
    } else {
        return -1;
    }
}

ORIBUND_FOR_PARAM_TYPES(ORIBUND_DEFINE_FOR_TYPE, EffectValParamAccessor)

} // namespace oribund
