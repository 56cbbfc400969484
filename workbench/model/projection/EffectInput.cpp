#include "workbench/model/projection/EffectInput.h"

#include <algorithm>
#include <utility>

namespace workbench
{

namespace
{
const ProjectedClip* clipWith(const Projection& whole, std::string_view effect)
{
    const auto has = [&](const ProjectedClip& clip) {
        return std::ranges::find(clip.filters, effect, &ProjectedFilter::effectId) != clip.filters.end();
    };
    const auto found = std::ranges::find_if(whole.clips, has);
    return found == whole.clips.end() ? nullptr : &*found;
}

/** The frame of the clip that is seen at a frame of the edit. */
std::optional<int> sourceFrameAt(const Projection& whole, const std::string& clip, int frame)
{
    for (const ProjectedTrack& track : whole.tracks) {
        int start = 0;
        for (const ProjectedEntry& entry : track.entries) {
            const int into = frame - start;
            start += entry.length;
            if (into < 0 || into >= entry.length)
                continue;
            for (const ProjectedCut& cut : {entry.first, entry.second})
                if (entry.kind != ProjectedEntry::Kind::Blank && cut.clip == clip && cut.in + into <= cut.out)
                    return cut.in + into;
        }
    }
    return {};
}
} // namespace

std::optional<EffectInput> inputOf(const Projection& whole, std::string_view effect, int frame)
{
    const ProjectedClip* const clip = clipWith(whole, effect);
    const std::optional<int> source = clip ? sourceFrameAt(whole, clip->id, frame) : std::nullopt;
    if (!source)
        return {};
    EffectInput input;
    input.frame = *source - clip->in;
    input.edit.profile = whole.profile;
    input.edit.length = clip->out - clip->in + 1;
    ProjectedClip before = *clip;
    // The filters of its mask stand round it: the first of them is the first of the effect.
    before.filters.erase(std::ranges::find(before.filters, effect, &ProjectedFilter::effectId), before.filters.end());
    ProjectedEntry entry;
    entry.kind = ProjectedEntry::Kind::Clip;
    entry.length = input.edit.length;
    entry.first = {before.id, before.in, before.out};
    input.edit.tracks.push_back({"track", {}, ProjectedTrack::Hide::Nothing, {std::move(entry)}});
    input.edit.clips.push_back(std::move(before));
    return input;
}

} // namespace workbench
