#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/effects/EffectInstance.h"

#include <algorithm>

namespace oribund
{

namespace
{
/** A parameter tells its own observers of its value, keyframes and function type. */
bool isChangeOfOneParam(const EffectChangeDescription& change)
{
    switch (change.code) {
    case EffectChangeCode::ParamValueChanged:
    case EffectChangeCode::KeyframesMoved:
    case EffectChangeCode::KeyframesChanged:
    case EffectChangeCode::FunctionTypeChanged:
    case EffectChangeCode::CurveShapeChanged:
        return change.param.valid() && !change.param.isWildcard() &&
               !(change.flags & EffectChangeDescription::kWholesaleRefresh);
    default:
        return false;
    }
}
} // namespace

CompoundEffectMonitor::CompoundEffectMonitor(Vob& vob)
    : CompoundEffectKeyframes(vob)
    , timeCallback_(this, &CompoundEffectMonitor::handleTimeEvent)
{
    timeCallback_.attach(vob.getCurrentTimeServer().notifier());
}

CompoundEffectMonitor::~CompoundEffectMonitor() = default;

Kt::Ptr<FXVob> CompoundEffectMonitor::getFXVob(const Kt::Ptr<EffectInstance>& effect)
{
    if (!effect || !vob())
        return {};
    const auto known = std::find_if(fxVobs_.begin(), fxVobs_.end(),
                                    [&effect](const auto& fxVob) { return fxVob->getEffectID() == effect->id(); });
    if (known != fxVobs_.end())
        return *known;

    // What nobody else holds any more goes now, so that the list stays as long as the panels that are open.
    std::erase_if(fxVobs_, [](const auto& fxVob) { return fxVob->refCount() == 1; });
    auto fxVob = Kt::makePtr<FXVob>(*vob(), effect->id());
    fxVob->update(findEffect(effect->id()), getEditRegion(effect->id()));
    fxVobs_.push_back(fxVob);
    return fxVob;
}

FXTime CompoundEffectMonitor::getCurrentFXTime(const Kt::Ptr<EffectInstance>& effect) const
{
    return effect && vob() ? toFXTime(getEditRegion(effect->id()), vob()->getCurrentTime()) : FXTime();
}

void CompoundEffectMonitor::effectChanged(const EffectChangeDescription& change)
{
    EffectChangeDescription told = change;
    if (isChangeOfOneParam(change))
        told.flags |= EffectChangeDescription::kToldByParams;
    else
        refreshFXVobs();
    noteChange(told);
    relay().tell(told);
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
        forgetVob();
        fxVobs_.clear();
    } else if (event.kind == ValEventKind::Changed) {
        EffectChangeDescription change;
        change.code = EffectChangeCode::CurrentTimeMoved;
        change.flags = EffectChangeDescription::kTimeOnly;
        change.effect = IdStamp::wildcard();
        noteChange(change);
        relay().tell(change);
    }
    return 0;
}

} // namespace oribund
