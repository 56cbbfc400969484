#include "oribund/host/edit/monitor/FXVob.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

FXVob::FXVob(Vob& vob, const IdStamp& effectId)
    : vob_(&vob)
    , currentTime_(&vob.getCurrentTimeServer())
    , effectId_(effectId)
    , timeCallback_(this, &FXVob::handleTimeEvent)
{
    timeCallback_.attach(currentTime_->notifier());
}

FXVob::~FXVob() = default;

double FXVob::getNormalisedCurrentTime() const
{
    return currentTime_ ? editTimeToFXTime(currentTime_->get()).normalised : 0.0;
}

FXTime FXVob::editTimeToFXTime(double editTime) const
{
    return toFXTime(region_, editTime);
}

double FXVob::fxTimeToEditTime(FXTime time) const
{
    return toEditTime(region_, time);
}

void FXVob::update(const Kt::Ptr<EffectInstance>& effect, const NumRange<double>& region)
{
    effect_ = effect;
    region_ = region;
}

int FXVob::handleTimeEvent(const ValServerEvent<double>& event)
{
    if (event.kind == ValEventKind::ServerGone) {
        timeCallback_.detach();
        vob_ = nullptr;
        currentTime_ = nullptr;
        effect_ = {};
        const Kt::Ptr<FXVob> self(this); // who hears may be the last to hold it
        vobGone_.notify(*this);
    }
    return 0;
}

} // namespace oribund
