#include "oribund/host/toolkit/layout/TabOrderManager.h"

#include "oribund/host/toolkit/layout/TabOrderable.h"
#include "oribund/host/toolkit/layout/TabOrderableHost.h"

#include <algorithm>

namespace oribund
{

TabOrderable::~TabOrderable()
{
    if (manager_)
        manager_->removeTabStop(this);
}

TabOrderableHost::~TabOrderableHost() = default;

TabOrderManager::~TabOrderManager()
{
    for (TabOrderable* stop : stops_)
        stop->manager_ = nullptr;
}

void TabOrderManager::addTabStop(TabOrderable* stop, int position)
{
    if (!stop)
        return;
    if (stop->manager_)
        stop->manager_->removeTabStop(stop);
    const bool append = position < 0 || static_cast<std::size_t>(position) >= stops_.size();
    stops_.insert(append ? stops_.end() : stops_.begin() + position, stop);
    stop->manager_ = this;
}

void TabOrderManager::addTabStopsFrom(TabOrderableHost* host, int position)
{
    if (!host)
        return;
    std::vector<TabOrderable*> added;
    host->getTabOrderables(added);
    for (TabOrderable* stop : added)
        removeTabStop(stop); // first all of them, so that the position does not shift while they are put in
    for (std::size_t i = 0; i < added.size(); ++i)
        addTabStop(added[i], position < 0 ? position : position + static_cast<int>(i));
}

void TabOrderManager::removeTabStop(TabOrderable* stop)
{
    if (!stop || stop->manager_ != this)
        return;
    stops_.erase(std::find(stops_.begin(), stops_.end(), stop));
    stop->manager_ = nullptr;
}

} // namespace oribund
