#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"

namespace oribund
{

class EffectInstance;
class Vob;

/**
 * The user removes what a panel shows, in one undo step: an effect or a mask from what it is on, a transition from its
 * cut. Playing stops first. False, and nothing done, when the edit is read-only, or has no place for it (any more).
 */
ORIBUND_API bool removeComponent(Vob& vob, const Kt::Ptr<EffectInstance>& effect);

} // namespace oribund
