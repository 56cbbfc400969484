#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"

#include <span>

namespace oribund
{

/** A colour that cues are given. */
struct CueColour {
    const wchar_t* name; ///< the same in every language
    Colour colour;
    int text; ///< resource id of the name that people use for it
};

/** All that there are to choose from; told apart at a glance on a dark ground, and light enough to be text on it. */
ORIBUND_API std::span<const CueColour> cueColours();

} // namespace oribund
