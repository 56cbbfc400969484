#pragma once

#include "oribund/host/canvas/Palette.h"

namespace oribund
{

/** The palette of the whole interface, and the colours of what only some panels draw. */
class ORIBUND_API ColourScheme : public Palette
{
public:
    /** Neutral dark greys, so that the picture being judged is the only thing with colour. */
    static ColourScheme dark();

    /** The line of the current time in bars and graphs. */
    Colour currentTime;
    /** Times marked by the user. */
    Colour mark;
    /** A keyframe, and its outline. */
    Colour keyframe;
    Colour keyframeOutline;
    /** The frame of an entry whose text is no value. */
    Colour error;
    /** What a rubber band encloses is washed in this. */
    Colour selection;

    bool operator==(const ColourScheme&) const = default;
};

} // namespace oribund
