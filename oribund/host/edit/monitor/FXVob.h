#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/notify/ValServer.h"

namespace oribund
{

class EffectInstance;
class Vob;

/**
 * One effect as one viewer shows it: the effect, and the region of the edit over which it runs.
 *
 * Effect time 0 is the region's start, 1 its end. Made and kept up to date by the viewer's CompoundEffectMonitor; it
 * stays valid, but empty, when the effect is removed from the edit or the viewer goes away, and is filled again when
 * the effect comes back (undo). User-interface thread only.
 */
class ORIBUND_API FXVob : public Kt::InternalRefCount, public iVirtual
{
public:
    FXVob(Vob& vob, const IdStamp& effectId);
    ~FXVob() override;

    /** The viewer; null once it is gone. */
    Vob* getVob() const { return vob_; }

    const IdStamp& getEffectID() const { return effectId_; }

    /** Empty while the edit does not hold the effect. */
    const Kt::Ptr<EffectInstance>& getEffectPtr() const { return effect_; }

    /** Edit times of the effect's start and end, in seconds. */
    const NumRange<double>& getEditRegion() const { return region_; }

    /** The viewer's current time as effect time; not limited to 0..1. 0 without a viewer or for an empty region. */
    double getNormalisedCurrentTime() const;

    FXTime editTimeToFXTime(double editTime) const;
    double fxTimeToEditTime(FXTime time) const;

    /** Tells when the viewer has gone; effect and viewer are empty by then. */
    Notifier<FXVob>& vobGone() { return vobGone_; }

    /** For the monitor: what the edit now holds. */
    void update(const Kt::Ptr<EffectInstance>& effect, const NumRange<double>& region);

private:
    int handleTimeEvent(const ValServerEvent<double>& event);

    Vob* vob_;
    ValServer<double>* currentTime_;
    IdStamp effectId_;
    Kt::Ptr<EffectInstance> effect_;
    NumRange<double> region_;
    Notifier<FXVob> vobGone_;
    MethodCallback<FXVob, ValServerEvent<double>, int> timeCallback_;
};

} // namespace oribund
