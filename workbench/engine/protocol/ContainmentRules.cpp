#include "workbench/engine/protocol/ContainmentRules.h"

#include "workbench/model/projection/Projection.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace workbench
{

namespace
{

class Places
{
public:
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

    void addValues(const ProjectedProperties& properties)
    {
        for (const ProjectedProperty& property : properties)
            add(property.value);
    }

    void addValues(const std::vector<ProjectedTransition>& transitions)
    {
        for (const ProjectedTransition& transition : transitions)
            addValues(transition.properties);
    }

    std::vector<std::string> sorted() const { return {found_.begin(), found_.end()}; }

private:
    std::set<std::string> found_;
};

bool isWithin(const std::string& path, const std::string& place)
{
    return path == place || (path.starts_with(place) && (place.ends_with('/') || path[place.size()] == '/'));
}

} // namespace

std::vector<std::string> placesOf(const Projection& projection)
{
    Places places;
    for (const ProjectedClip& clip : projection.clips) {
        places.add(clip.resource);
        places.addValues(clip.properties);
        for (const ProjectedFilter& filter : clip.filters)
            places.addValues(filter.properties);
    }
    for (const ProjectedTrack& track : projection.tracks)
        for (const ProjectedEntry& entry : track.entries)
            places.addValues(entry.transitions);
    places.addValues(projection.transitions);
    return places.sorted();
}

bool covers(const ContainmentRules& rules, const Projection& projection)
{
    const std::vector<std::string> needed = placesOf(projection);
    return std::all_of(needed.begin(), needed.end(), [&](const std::string& path) {
        return std::any_of(rules.readable.begin(), rules.readable.end(),
                           [&](const std::string& place) { return isWithin(path, place); });
    });
}

} // namespace workbench
