#include "oribund/host/edit/CompoundEffectMonitorClient.h"

#include "oribund/host/edit/CompoundEffectMonitor.h"

namespace oribund
{

CompoundEffectMonitorClient::CompoundEffectMonitorClient(CompoundEffectMonitor* monitor)
    : callback_(this, &CompoundEffectMonitorClient::handleChange)
{
    setMonitor(monitor);
}

CompoundEffectMonitorClient::~CompoundEffectMonitorClient() = default;

void CompoundEffectMonitorClient::setMonitor(CompoundEffectMonitor* monitor)
{
    callback_.detach();
    if (monitor)
        callback_.attach(monitor->changes());
}

int CompoundEffectMonitorClient::handleChange(const ChangeDescription& change)
{
    handleFXModifications(change);
    return 0;
}

} // namespace oribund
