#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

class EffectValParamBase;
class FXVobClient;

/**
 * Sets a parameter of the client's effect to its default, at the current time if it is animated. One undo step, unless
 * it happens within a gesture that is open already. False when it may not be changed now.
 */
ORIBUND_API bool resetParam(const FXVobClient& client, EffectValParamBase& param);

} // namespace oribund
