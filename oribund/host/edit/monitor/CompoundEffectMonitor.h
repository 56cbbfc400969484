#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"
#include "oribund/host/edit/monitor/FXVob.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/notify/ValServer.h"

#include <vector>

namespace oribund
{

/**
 * The effects of all tracks of one viewed edit, as panels see them.
 *
 * Panels are its clients (CompoundEffectMonitorClient): it tells them of every change of an effect, and of the current
 * time moving over them. A host derives from it, one for each Vob, answers the queries of TrackEffects, keeps backups
 * for gestures and reports changes; all else is here and in CompoundEffectKeyframes. Times are edit times in seconds.
 * User-interface thread only.
 */
class ORIBUND_API CompoundEffectMonitor : public CompoundEffectKeyframes
{
public:
    ~CompoundEffectMonitor() override;

    /** The FXVob of an effect, made at the first asking; the same one as long as anybody holds it. Empty for an empty
        effect, and once the viewer is gone. */
    Kt::Ptr<FXVob> getFXVob(const Kt::Ptr<EffectInstance>& effect);

    /** The current time within an effect; not limited. 0 for an empty effect, and once the viewer is gone. */
    FXTime getCurrentFXTime(const Kt::Ptr<EffectInstance>& effect) const;

    /** The part of effect time that the user works on; every time bar of the track marks it. */
    ValServer<NumRange<FXTime, Unordered>>& getSignificantRegionServer() { return significantRegion_; }

    /**
     * For the host: brings FXVobs, keyframe sets and selection in step with the edit, then tells every client. To be
     * called once for every change of an effect, whoever has made it: the library does not tell of its own edits. A
     * change of one parameter names it, and then refreshes nobody but those who show it (EffectWatch tells of them so).
     */
    void effectChanged(const EffectChangeDescription& change);

    /** For clients, which register by CompoundEffectMonitorClient. */
    Notifier<EffectChangeDescription>& changes() { return relay().changes(); }

protected:
    explicit CompoundEffectMonitor(Vob& vob);

private:
    int handleTimeEvent(const ValServerEvent<double>& event);
    void refreshFXVobs();

    std::vector<Kt::Ptr<FXVob>> fxVobs_;
    ValServer<NumRange<FXTime, Unordered>> significantRegion_;
    MethodCallback<CompoundEffectMonitor, ValServerEvent<double>, int> timeCallback_;
};

} // namespace oribund
