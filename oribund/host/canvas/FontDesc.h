#pragma once

#include "oribund/host/base/LightweightString.h"

namespace oribund::Glib
{

/** A font as a panel asks for it; who draws picks the nearest that there is. */
struct FontDesc {
    /** Empty: the host's interface font. */
    String family;
    /** Height in logical pixels; 0: the default size of UifStd. */
    int size = 0;
    bool bold = false;
    bool italic = false;

    bool operator==(const FontDesc&) const = default;
};

} // namespace oribund::Glib
