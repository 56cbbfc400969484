#include "oribund/host/toolkit/core/GlobCreationInfo.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"

namespace oribund
{

GlobCreationInfo::GlobCreationInfo()
    : palette(UifStd::getColourScheme())
{
}

GlobCreationInfo::GlobCreationInfo(unsigned short w, unsigned short h, Canvas* where)
    : GlobCreationInfo()
{
    width = w;
    height = h;
    canvas = where;
}

} // namespace oribund
