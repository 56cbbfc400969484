#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/edit/FXVob.h"
#include "oribund/host/effects/EffectChange.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/notify/ValServer.h"

#include <vector>

namespace oribund
{

class EffectInstance;
class Vob;

/**
 * The effects of all tracks of one viewed edit, as panels see them.
 *
 * Panels are its clients (CompoundEffectMonitorClient): it tells them of every change of an effect, and of the current
 * time moving over them. A host derives from it, one for each Vob, and answers the four queries; the FXVobs and the
 * telling are here. Times are edit times in seconds. User-interface thread only.
 */
class ORIBUND_API CompoundEffectMonitor : public iVirtual
{
public:
    ~CompoundEffectMonitor() override;

    /** The effects at work on a track at the current time, in the order in which they are applied. */
    virtual std::vector<Kt::Ptr<EffectInstance>> getEffects(const IdStamp& track) const = 0;

    /** The effect of that id, at whatever time; empty when the edit holds none. */
    virtual Kt::Ptr<EffectInstance> findEffect(const IdStamp& effect) const = 0;

    /** The region over which an effect runs; empty (0, 0) for an unknown one. */
    virtual NumRange<double> getEditRegion(const IdStamp& effect) const = 0;

    /** The span of the regions of all effects that getEffects() gives; empty (0, 0) without any. */
    NumRange<double> getCompoundEditRegion(const IdStamp& track) const;

    /** The FXVob of an effect, made at the first asking; the same one as long as anybody holds it. Empty for an empty
        effect, and once the viewer is gone. */
    Kt::Ptr<FXVob> getFXVob(const Kt::Ptr<EffectInstance>& effect);

    /** The part of effect time that the user works on; every time bar of the track marks it. */
    ValServer<NumRange<FXTime, Unordered>>& getSignificantRegionServer() { return significantRegion_; }

    /** For the host: brings the FXVobs in step with the edit, then tells every client. */
    void effectChanged(const EffectChangeDescription& change);

    /** For clients, which register by CompoundEffectMonitorClient. */
    Notifier<EffectChangeDescription>& changes() { return changes_; }

protected:
    explicit CompoundEffectMonitor(Vob& vob);

private:
    int handleTimeEvent(const ValServerEvent<double>& event);
    void refreshFXVobs();

    Vob* vob_;
    std::vector<Kt::Ptr<FXVob>> fxVobs_;
    Notifier<EffectChangeDescription> changes_;
    ValServer<NumRange<FXTime, Unordered>> significantRegion_;
    MethodCallback<CompoundEffectMonitor, ValServerEvent<double>, int> timeCallback_;
};

} // namespace oribund
