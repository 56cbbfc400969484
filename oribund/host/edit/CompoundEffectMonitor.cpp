#include "oribund/host/edit/CompoundEffectMonitor.h"

#include "oribund/host/edit/Vob.h"
#include "oribund/host/effects/EffectInstance.h"

#include <algorithm>

namespace oribund
{

CompoundEffectMonitor::CompoundEffectMonitor(Vob& vob)
    : vob_(&vob)
    , timeCallback_(this, &CompoundEffectMonitor::handleTimeEvent)
{
    timeCallback_.attach(vob.getCurrentTimeServer().notifier());
}

CompoundEffectMonitor::~CompoundEffectMonitor() = default;

NumRange<double> CompoundEffectMonitor::getCompoundEditRegion(const IdStamp& track) const
{
    NumRange<double> whole;
    bool first = true;
    for (const auto& effect : getEffects(track)) {
        const NumRange<double> region = getEditRegion(effect->id());
        whole = first ? region
                      : NumRange<double>(std::min(whole.start(), region.start()), std::max(whole.end(), region.end()));
        first = false;
    }
    return whole;
}

Kt::Ptr<FXVob> CompoundEffectMonitor::getFXVob(const Kt::Ptr<EffectInstance>& effect)
{
    if (!effect || !vob_)
        return {};
    const auto known = std::find_if(fxVobs_.begin(), fxVobs_.end(),
                                    [&effect](const auto& fxVob) { return fxVob->getEffectID() == effect->id(); });
    if (known != fxVobs_.end())
        return *known;

    // What nobody else holds any more goes now, so that the list stays as long as the panels that are open.
    std::erase_if(fxVobs_, [](const auto& fxVob) { return fxVob->refCount() == 1; });
    auto fxVob = Kt::makePtr<FXVob>(*vob_, effect->id());
    fxVob->update(findEffect(effect->id()), getEditRegion(effect->id()));
    fxVobs_.push_back(fxVob);
    return fxVob;
}

void CompoundEffectMonitor::effectChanged(const EffectChangeDescription& change)
{
    refreshFXVobs();
    changes_.notify(change);
}

void CompoundEffectMonitor::refreshFXVobs()
{
    for (const auto& fxVob : fxVobs_)
        fxVob->update(findEffect(fxVob->getEffectID()), getEditRegion(fxVob->getEffectID()));
}

int CompoundEffectMonitor::handleTimeEvent(const ValServerEvent<double>& event)
{
    if (event.kind == ValEventKind::ServerGone) {
        timeCallback_.detach();
        vob_ = nullptr;
        fxVobs_.clear();
    } else if (event.kind == ValEventKind::Changed) {
        EffectChangeDescription change;
        change.code = EffectChangeCode::CurrentTimeMoved;
        change.flags = EffectChangeDescription::kTimeOnly;
        change.effect = IdStamp::wildcard();
        changes_.notify(change);
    }
    return 0;
}

} // namespace oribund
