#include "oribund/host/edit/monitor/FXVobClient.h"

#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

namespace
{
CompoundEffectMonitor* monitorOf(const FXViewHandle& handle)
{
    Vob* const vob = handle.getVob();
    return vob ? vob->getEffectMonitor() : nullptr;
}
} // namespace

FXVobClient::FXVobClient(const FXViewHandle& handle)
    : CompoundEffectMonitorClient(monitorOf(handle))
    , handle_(handle)
{
}

FXVobClient::~FXVobClient() = default;

double FXVobClient::getNormalisedCurrentTime() const
{
    return handle_.getFXVob() ? handle_.getFXVob()->getNormalisedCurrentTime() : 0.0;
}

void FXVobClient::prepareEdit() const
{
    if (Vob* const vob = handle_.getVob())
        vob->prepareEdit(handle_.getFXVob()->getEditRegion());
}

bool FXVobClient::canEditParam(const EffectInstance& effect, const EffectValParamBase& param) const
{
    const EditPtr edit = getViewedEdit();
    return edit && !edit->isReadOnly() && effect.canEditParam(param);
}

EditPtr FXVobClient::getViewedEdit() const
{
    return getVob() ? getVob()->getEdit() : EditPtr();
}

void FXVobClient::setViewHandle(const FXViewHandle& handle)
{
    handle_ = handle;
    setMonitor(monitorOf(handle));
}

} // namespace oribund
