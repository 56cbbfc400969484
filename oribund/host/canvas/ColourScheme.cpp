#include "oribund/host/canvas/ColourScheme.h"

namespace oribund
{

ColourScheme ColourScheme::dark()
{
    ColourScheme scheme;
    scheme.currentTime = Colour::fromRGB(0xe5484d);
    scheme.mark = Colour::fromRGB(0xd9a441);
    scheme.keyframe = Colour::fromRGB(0xc8c8c8);
    scheme.keyframeOutline = Colour::fromRGB(0x161616);
    scheme.error = Colour::fromRGB(0xff6166);
    scheme.selection = scheme.focus().withAlpha(0.25);
    return scheme;
}

} // namespace oribund
