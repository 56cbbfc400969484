#include "workbench/engine/protocol/ContainmentRules.h"

#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/Projection.h"

#include <unistd.h>

#include <algorithm>
#include <set>
#include <string_view>

namespace workbench
{

namespace
{

/** Only what is allowed is ever made. What else a project names, it may name in order to have it opened to a worker. */
class Places
{
public:
    void add(const ProjectedClip& clip)
    {
        const std::string medium = clip.service.empty() ? clip.resource : clip.service + ':' + clip.resource;
        if (const auto source = rules().sourceOf(medium))
            add(source->resource);
    }

    void add(const std::vector<ProjectedTransition>& transitions)
    {
        for (const ProjectedTransition& transition : transitions)
            for (const ProjectedProperty& property : transition.properties)
                if (rules().allowsProperty(AllowList::Use::Transition, transition.service, property.name,
                                           property.value))
                    add(property.value);
    }

    std::vector<std::string> sorted() const { return {found_.begin(), found_.end()}; }

private:
    // No effect may name a file, so that it is no matter which are installed.
    static const AllowList& rules()
    {
        static const AllowList builtIn({});
        return builtIn;
    }

    void add(std::string_view path)
    {
        if (!path.starts_with('/'))
            return;
        // The name of a row of pictures is none of a file: it stands for any number of them in one folder.
        const std::size_t name = path.rfind('/') + 1;
        if (path.find('%', name) != std::string_view::npos)
            path = path.substr(0, std::max<std::size_t>(name - 1, 1));
        found_.emplace(path);
    }

    std::set<std::string> found_;
};

bool isWithin(const std::string& path, const std::string& place)
{
    return path == place || (path.starts_with(place) && (place.ends_with('/') || path[place.size()] == '/'));
}

} // namespace

std::uint64_t usualMemoryLimit()
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long size = sysconf(_SC_PAGESIZE);
    return pages > 0 && size > 0 ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size) / 4 * 3 : 0;
}

std::vector<std::string> placesOf(const Projection& projection)
{
    Places places;
    for (const ProjectedClip& clip : projection.clips)
        places.add(clip);
    for (const ProjectedTrack& track : projection.tracks)
        for (const ProjectedEntry& entry : track.entries)
            places.add(entry.transitions);
    places.add(projection.transitions);
    return places.sorted();
}

bool covers(const ContainmentRules& rules, const Projection& projection)
{
    return covers(rules, placesOf(projection));
}

bool covers(const ContainmentRules& rules, const std::vector<std::string>& needed)
{
    return std::all_of(needed.begin(), needed.end(), [&](const std::string& path) {
        return std::any_of(rules.readable.begin(), rules.readable.end(),
                           [&](const std::string& place) { return isWithin(path, place); });
    });
}

} // namespace workbench
