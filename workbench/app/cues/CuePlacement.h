#pragma once

#include "oribund/host/base/LightweightString.h"

namespace oribund
{
class CueList;
struct Cue;
} // namespace oribund

namespace workbench
{

class ModelVob;

// Of the cues that are shown. What is found is valid until the cues change.

/** The cue in a frame of the edit in the viewer; null for none. */
const oribund::Cue* cueInFrame(const ModelVob& vob, int frame);

/** The nearest cue before or behind a frame; null where there is none. */
const oribund::Cue* previousCue(const ModelVob& vob, int frame);
const oribund::Cue* nextCue(const ModelVob& vob, int frame);

/** "Cue" with the first number that no cue is named with. */
oribund::WString freeCueName(const oribund::CueList& cues);

} // namespace workbench
