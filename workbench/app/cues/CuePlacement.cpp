#include "workbench/app/cues/CuePlacement.h"

#include "workbench/model/host/ModelVob.h"

#include <algorithm>
#include <string>

namespace workbench
{

using oribund::Cue;

namespace
{
bool isShown(const Cue& cue)
{
    return (cue.flags & Cue::kVisible) != 0;
}
} // namespace

const Cue* cueInFrame(const ModelVob& vob, int frame)
{
    const Cue* const next = nextCue(vob, frame - 1);
    return next && vob.frameOf(next->time) == frame ? next : nullptr;
}

const Cue* previousCue(const ModelVob& vob, int frame)
{
    const Cue* previous = nullptr;
    for (const Cue& cue : vob.editModel()->getCues())
        if (isShown(cue) && vob.frameOf(cue.time) < frame)
            previous = &cue;
    return previous;
}

const Cue* nextCue(const ModelVob& vob, int frame)
{
    for (const Cue& cue : vob.editModel()->getCues())
        if (isShown(cue) && vob.frameOf(cue.time) > frame)
            return &cue;
    return nullptr;
}

oribund::WString freeCueName(const oribund::CueList& cues)
{
    for (std::size_t number = 1;; ++number) {
        oribund::WString name((L"Cue " + std::to_wstring(number)).c_str());
        if (std::none_of(cues.begin(), cues.end(), [&name](const Cue& cue) { return cue.name == name; }))
            return name;
    }
}

} // namespace workbench
