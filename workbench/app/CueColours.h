#pragma once

#include "oribund/host/base/Colour.h"

#include <span>

namespace workbench
{

/** A colour that cues are given, by a name that people use for it. */
struct CueColour {
    const char* name;
    oribund::Colour colour;
};

/** All that there are to choose from; told apart at a glance on a dark ground, and light enough to be text on it. */
std::span<const CueColour> cueColours();

/** The colour used last, also in an earlier run: that of the next cue. */
oribund::Colour lastCueColour();

void rememberCueColour(const oribund::Colour& colour);

} // namespace workbench
