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
    return fxVob_ ? EffectInstance::findWithin(fxVob_->getEffectPtr(), viewEffectId_) : Kt::Ptr<EffectInstance>();
}

} // namespace oribund
