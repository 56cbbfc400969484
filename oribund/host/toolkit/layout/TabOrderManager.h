#pragma once

#include "oribund/host/base/Export.h"

#include <vector>

namespace oribund
{

class TabOrderable;
class TabOrderableHost;

/** The order in which the Tab key visits widgets. Owns none of them. */
class ORIBUND_API TabOrderManager
{
public:
    /** As a position: after the last stop. */
    static constexpr int kAppend = -2;

    TabOrderManager() = default;
    virtual ~TabOrderManager();

    TabOrderManager(const TabOrderManager&) = delete;
    TabOrderManager& operator=(const TabOrderManager&) = delete;

    /** Puts a stop before the one at `position`; any position that there is not appends. Moves a stop that is in. */
    void addTabStop(TabOrderable* stop, int position = kAppend);

    /** The same for all stops of a host, in their order. */
    void addTabStopsFrom(TabOrderableHost* host, int position = kAppend);

    void removeTabStop(TabOrderable* stop);

    const std::vector<TabOrderable*>& tabStops() const { return stops_; }

private:
    std::vector<TabOrderable*> stops_;
};

} // namespace oribund
