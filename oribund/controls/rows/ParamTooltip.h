#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

namespace oribund
{

class EffectValParamBase;

/** What a pointer resting on a parameter's name tells: its whole name, its default and its range, a line each. */
ORIBUND_API WString paramTooltip(const EffectValParamBase& param);

} // namespace oribund
