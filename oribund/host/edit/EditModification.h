#pragma once

#include "oribund/host/base/IdStamp.h"

namespace oribund
{

/** What happened to an edit, as its observers are told. */
struct EditModification {
    /** The numbers are part of the contract: hosts pass them on. */
    enum class Type : int {
        Wholesale = 0,      ///< anything may have changed; read everything again
        Segments = 1,       ///< segments were added, removed, moved or trimmed
        Tracks = 2,         ///< tracks were added or removed
        Cues = 3,           ///< cues were added, removed or changed
        Transitions = 4,    ///< transitions were added, removed or changed
        EffectGraph = 10,   ///< effects were added, removed or reordered
        EffectDetails = 11, ///< an effect's name or on/off state changed
        EffectContent = 17  ///< a change that an effect panel made; `detail` says what, as a Type
    };

    Type type = Type::Wholesale;
    int detail = 0;
    int count = 1;  ///< of things changed
    IdStamp object; ///< the track, effect or cue concerned; not valid where it is several
};

} // namespace oribund
