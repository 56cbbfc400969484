#include "oribund/host/edit/monitor/FXViewHandle.h"

#include "oribund/host/effects/EffectInstance.h"

#include <utility>

namespace oribund
{

FXViewHandle::FXViewHandle(Kt::Ptr<FXVob> fxVob)
    : fxVob_(std::move(fxVob))
{
    if (fxVob_)
        viewEffectId_ = fxVob_->getEffectID();
}

FXViewHandle::FXViewHandle(Kt::Ptr<FXVob> fxVob, const IdStamp& viewEffectId)
    : fxVob_(std::move(fxVob))
    , viewEffectId_(viewEffectId)
{
}

Kt::Ptr<EffectInstance> FXViewHandle::getEffectPtr() const
{
    if (!fxVob_ || !fxVob_->getEffectPtr())
        return {};
    const Kt::Ptr<EffectInstance>& effect = fxVob_->getEffectPtr();
    if (viewEffectId_ == effect->id())
        return effect;
    if (Kt::Ptr<EffectInstance> mask = effect->getMask(); mask && mask->id() == viewEffectId_)
        return mask;
    const auto path = effect->findEmbeddedChild(viewEffectId_);
    return path.empty() ? Kt::Ptr<EffectInstance>() : effect->getEmbeddedChild(path);
}

} // namespace oribund
