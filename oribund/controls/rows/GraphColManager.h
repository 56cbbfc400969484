#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"

namespace oribund
{

class IdStamp;

/** Gives each parameter the colour in which its graph, dial and handles are drawn. */
class ORIBUND_API GraphColManager
{
public:
    /** Always the same for the same id; ids that follow one another have colours that are easy to tell apart. */
    static Colour getColourFor(const IdStamp& param);
};

} // namespace oribund
