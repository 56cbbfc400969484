#pragma once

#include "oribund/host/edit/Edit.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

/** Follows one effect in one view: yields the effect and the current time within it, and hears of its changes. */
class ORIBUND_API FXVobClient : public CompoundEffectMonitorClient
{
public:
    explicit FXVobClient(const FXViewHandle& handle);
    ~FXVobClient() override;

    const FXViewHandle& getViewHandle() const { return handle_; }

    /** Empty while the edit does not hold the effect. */
    Kt::Ptr<EffectInstance> getEffectPtr() const { return handle_.getEffectPtr(); }

    const Kt::Ptr<FXVob>& getFXVob() const { return handle_.getFXVob(); }

    Vob* getVob() const { return handle_.getVob(); }

    /** Empty without a view, and while the viewer shows no edit. */
    EditPtr getViewedEdit() const;

    /** The current time as effect time: 0 at the effect's start, 1 at its end; not limited. 0 without a view. */
    double getNormalisedCurrentTime() const;

    /** Whether the user may change a parameter of the effect now: the edit is not read-only, and the effect allows it.
     */
    bool canEditParam(const EffectInstance& effect, const EffectValParamBase& param) const;

    /** Before a keyframe is written at the current time: the host may first move that to the effect. */
    void prepareEdit() const;

protected:
    /** Follows another effect; the owner brings what it shows in step. */
    void setViewHandle(const FXViewHandle& handle);

private:
    FXViewHandle handle_;
};

} // namespace oribund
