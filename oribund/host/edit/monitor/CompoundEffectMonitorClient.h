#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/effects/EffectChange.h"
#include "oribund/host/notify/MethodCallback.h"

namespace oribund
{

class CompoundEffectMonitor;
class EffectInstance;

/** Base of what shows effects: is told of every change that its monitor knows of. Released on destruction. */
class ORIBUND_API CompoundEffectMonitorClient : public iVirtual
{
public:
    using ChangeDescription = EffectChangeDescription;

    /** Null makes a client that hears nothing. */
    explicit CompoundEffectMonitorClient(CompoundEffectMonitor* monitor);
    ~CompoundEffectMonitorClient() override;

    CompoundEffectMonitorClient(const CompoundEffectMonitorClient&) = delete;
    CompoundEffectMonitorClient& operator=(const CompoundEffectMonitorClient&) = delete;

    void setMonitor(CompoundEffectMonitor* monitor);

    /** Null when there is none, or none any more. */
    CompoundEffectMonitor* monitor() const;

    /** The current time within an effect; not limited. 0 without a monitor. */
    FXTime getCurrentFXTime(const Kt::Ptr<EffectInstance>& effect) const;

protected:
    virtual void handleFXModifications(const ChangeDescription&) {}

private:
    int handleChange(const ChangeDescription& change);

    CompoundEffectMonitor* monitor_ = nullptr;
    FixedMethodCallback<CompoundEffectMonitorClient, ChangeDescription, &CompoundEffectMonitorClient::handleChange>
        callback_;
};

} // namespace oribund
