#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"

#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"

namespace oribund
{

CompoundEffectMonitorClient::CompoundEffectMonitorClient(CompoundEffectMonitor* monitor)
    : callback_(this)
{
    setMonitor(monitor);
}

CompoundEffectMonitorClient::~CompoundEffectMonitorClient() = default;

void CompoundEffectMonitorClient::setMonitor(CompoundEffectMonitor* monitor)
{
    callback_.detach();
    monitor_ = monitor;
    if (monitor)
        callback_.attach(monitor->changes());
}

CompoundEffectMonitor* CompoundEffectMonitorClient::monitor() const
{
    return callback_.attached() ? monitor_ : nullptr;
}

FXTime CompoundEffectMonitorClient::getCurrentFXTime(const Kt::Ptr<EffectInstance>& effect) const
{
    const CompoundEffectMonitor* const asked = monitor();
    return asked ? asked->getCurrentFXTime(effect) : FXTime();
}

int CompoundEffectMonitorClient::handleChange(const ChangeDescription& change)
{
    handleFXModifications(change);
    return 0;
}

} // namespace oribund
