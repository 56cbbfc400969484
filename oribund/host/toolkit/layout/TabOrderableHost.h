#pragma once

#include "oribund/host/base/Export.h"

#include <vector>

namespace oribund
{

class TabOrderable;

/** A widget made of several that are stops of the Tab key. */
class ORIBUND_API TabOrderableHost
{
public:
    virtual ~TabOrderableHost();

    /** Appends the stops in their order. */
    virtual void getTabOrderables(std::vector<TabOrderable*>& stops) = 0;
};

} // namespace oribund
