#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/effects/params/ParamValue.h"

namespace oribund
{

class EffectValParamBase;

// What a person reads of parameters: in rows, tooltips and the texts of undo. In the user's language; user-interface
// thread only.

/** What a row calls a parameter: its description, with the unit where that does not stand behind the value. */
ORIBUND_API WString rowNameOf(const EffectValParamBase& param);

/**
 * A value with the same figures as in the row of the parameter: "12 %", "2× 45°", "#ff8000", "yes", the text of an
 * item. Empty for a choice of nothing, and for a value of another type than the parameter's.
 */
ORIBUND_API WString valueText(const EffectValParamBase& param, const ParamValue& value);

/** What a pointer resting on a parameter's name tells: its whole name, what it does, its default and its range. */
ORIBUND_API WString paramTooltip(const EffectValParamBase& param);

/** "keyframe", or "3 keyframes". */
ORIBUND_API WString keyframesText(int count);

} // namespace oribund
