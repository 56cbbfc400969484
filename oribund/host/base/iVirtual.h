#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

/** Base of interfaces: gives them a virtual destructor and leaves them copyable and movable. */
class ORIBUND_API iVirtual
{
public:
    virtual ~iVirtual() = default;

protected:
    iVirtual() = default;
    iVirtual(const iVirtual&) = default;
    iVirtual(iVirtual&&) = default;
    iVirtual& operator=(const iVirtual&) = default;
    iVirtual& operator=(iVirtual&&) = default;
};

} // namespace oribund
