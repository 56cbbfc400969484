#pragma once

#include "oribund/host/edit/Edit.h"
#include "oribund/host/edit/iScrubControl.h"

namespace oribund
{

class Vob;

/** The time of the whole frame nearest to `editTime`; `editTime` itself without an edit. Seconds. */
double frameRound(double editTime, const EditPtr& edit);

/** Tells a viewer that a drag of its current time begins, and how to show it. Null is allowed. */
void beginScrub(Vob* vob, PlayState state);

/** Tells it that the drag is over. */
void endScrub(Vob* vob);

} // namespace oribund
