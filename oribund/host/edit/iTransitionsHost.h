#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/iVirtual.h"

namespace oribund
{

/** What a host does to the transitions of one viewed edit, as undo steps. User-interface thread only. */
class ORIBUND_API iTransitionsHost : public iVirtual
{
public:
    /** Removes the transition of a track that runs at an edit time, in seconds. False when there is none. */
    virtual bool removeVideoTransition(const IdStamp& track, double editTime) = 0;
};

} // namespace oribund
