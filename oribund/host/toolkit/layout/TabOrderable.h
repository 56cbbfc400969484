#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

class Glob;
class TabOrderManager;

/**
 * A widget that is one stop of the Tab key. A mixin beside Glob; the stop leaves its manager when it is destroyed, and
 * is in one at most.
 */
class ORIBUND_API TabOrderable
{
public:
    TabOrderable() = default;
    virtual ~TabOrderable();

    TabOrderable(const TabOrderable&) = delete;
    TabOrderable& operator=(const TabOrderable&) = delete;

    /** The glob that takes the keyboard. */
    virtual Glob& tabGlob() = 0;

    TabOrderManager* tabOrderManager() const { return manager_; }

private:
    friend class TabOrderManager;
    TabOrderManager* manager_ = nullptr;
};

} // namespace oribund
