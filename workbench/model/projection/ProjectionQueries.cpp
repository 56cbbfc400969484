#include "workbench/model/projection/ProjectionQueries.h"

#include "oribund/host/edit/TimeCode.h"

#include <algorithm>

namespace workbench
{

namespace
{

const ProjectedClip* findClip(const Projection& projection, std::string_view id)
{
    const auto found = std::find_if(projection.clips.begin(), projection.clips.end(),
                                    [&](const ProjectedClip& clip) { return clip.id == id; });
    return found == projection.clips.end() ? nullptr : &*found;
}

bool isDisabled(const ProjectedFilter& filter)
{
    return std::any_of(filter.properties.begin(), filter.properties.end(), [](const ProjectedProperty& property) {
        return property.name == "disable" && property.value == "1";
    });
}

int lengthOf(const ProjectedEntry& entry)
{
    return entry.kind == ProjectedEntry::Kind::Clip ? entry.first.out - entry.first.in + 1 : entry.length;
}

/** Adds the effects on the frame of a cut that is `offset` frames after its in point. */
void addEffects(const Projection& projection, const ProjectedCut& cut, int offset,
                std::vector<const ProjectedFilter*>& result)
{
    const ProjectedClip* clip = findClip(projection, cut.clip);
    if (!clip)
        return;
    const int source = cut.in + offset;
    for (const ProjectedFilter& filter : clip->filters)
        if (filter.partOf.empty() && source >= filter.in && source <= filter.out && !isDisabled(filter))
            result.push_back(&filter);
}

} // namespace

std::vector<const ProjectedFilter*> effectsAt(const Projection& projection, int frame)
{
    std::vector<const ProjectedFilter*> result;
    for (const ProjectedTrack& track : projection.tracks) {
        int begin = 0;
        for (const ProjectedEntry& entry : track.entries) {
            const int length = lengthOf(entry);
            if (frame >= begin && frame < begin + length && entry.kind != ProjectedEntry::Kind::Blank) {
                addEffects(projection, entry.first, frame - begin, result);
                if (entry.kind == ProjectedEntry::Kind::Mix)
                    addEffects(projection, entry.second, frame - begin, result);
            }
            begin += length;
        }
    }
    return result;
}

const ProjectedFilter* findEffect(const Projection& projection, std::string_view id)
{
    for (const ProjectedClip& clip : projection.clips)
        for (const ProjectedFilter& filter : clip.filters)
            if (filter.id == id)
                return &filter;
    return nullptr;
}

std::vector<std::string> serviceNames(const std::vector<const ProjectedFilter*>& effects)
{
    std::vector<std::string> names;
    for (const ProjectedFilter* effect : effects)
        names.push_back(effect->service);
    return names;
}

std::string nameInQuotes(const ProjectedFilter& effect)
{
    return inQuotes(effect.name.empty() ? effect.service : effect.name);
}

std::string timeCodeAt(const Projection& projection, int frame)
{
    const ProjectedProfile& profile = projection.profile;
    const int rate =
        oribund::framesPerSecond(static_cast<double>(profile.fpsDenominator) / std::max(profile.fpsNumerator, 1));
    return std::string(oribund::toUTF8(oribund::timeCodeText(std::max(frame, 0), rate)).view());
}

std::string inQuotes(std::string_view name)
{
    std::string result;
    result.reserve(name.size() + 2);
    result += '"';
    result += name;
    result += '"';
    return result;
}

} // namespace workbench
