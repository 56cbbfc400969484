#pragma once

#include "workbench/store/mlt/MltServices.h"

#include "workbench/model/EditData.h"

#include <vector>

namespace workbench
{

/** A clip on a track, as long as it is seen in full or for the greater part: half of each mix with a neighbour is its
    own. Frames. */
struct TrackPiece {
    pugi::xml_node entry; ///< may have effects of its own, beside those of the clip
    pugi::xml_node clip;
    int start = 0;
    int in = 0;
    int length = 0;
    TransitionData into; ///< from the piece before; its length is 0 for a cut

    int end() const { return start + length; }
};

/** The pieces of a track, and what it has beside them. */
struct TrackPieces {
    std::vector<TrackPiece> pieces;
    std::size_t entries = 0;
    int nested = 0; ///< edits; their place stays empty
    int mixers = 0; ///< mixes that are something else than a dissolve or a wipe, and are now a dissolve
};

/** Of a playlist, or of a clip that is a track by itself; no more than the first `most` entries. */
TrackPieces readTrack(pugi::xml_node track, const MltServices& services, const FormatData& format, std::size_t most);

} // namespace workbench
