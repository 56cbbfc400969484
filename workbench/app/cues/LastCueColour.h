#pragma once

#include "oribund/host/base/Colour.h"

namespace workbench
{

/** The colour used last, also in an earlier run: that of the next cue. */
oribund::Colour lastCueColour();

void rememberCueColour(const oribund::Colour& colour);

} // namespace workbench
