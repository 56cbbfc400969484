#pragma once

namespace oribund::TextIds
{

/** The texts of the host's table that panels ask for, by resource id, with what an English table has there. */
enum : int {
    kMaskTitle = 13682,    ///< "Mask"
    kSwitchEffect = 20001, ///< "Switch $EFFECT$ on or off"
};

} // namespace oribund::TextIds
