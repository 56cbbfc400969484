#include "oribund/controls/binding/ParamFinder.h"

#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

EffectValParamBase* ParamFinder::find(const Kt::Ptr<EffectInstance>& effect)
{
    if (!effect)
        return nullptr;
    const auto params = effect->params();
    const auto index = static_cast<std::size_t>(paramIndex_);
    if (paramIndex_ >= 0 && index < params.size() && params[index]->id() == paramId_)
        return params[index].get();
    paramIndex_ = effect->indexOfParam(paramId_);
    return paramIndex_ < 0 ? nullptr : params[static_cast<std::size_t>(paramIndex_)].get();
}

} // namespace oribund
