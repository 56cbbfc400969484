#include "workbench/model/projection/Admission.h"

#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <utility>

namespace workbench
{

namespace
{
using Use = AllowList::Use;
using What = Refusal::What;

constexpr const char* kStandInColour = "#ff400810";

// Each can be made everywhere, and does nothing when it is switched off.
constexpr const char* kIdleEffect = "brightness";
constexpr const char* kIdleTransition = "mix";

class Gate
{
public:
    Gate(Projection projection, const AllowList& allowed)
        : allowed_(allowed)
    {
        result_.projection = std::move(projection);
    }

    Admission run()
    {
        for (ProjectedClip& clip : result_.projection.clips) {
            checkClip(clip);
            for (ProjectedFilter& filter : clip.filters)
                checkFilter(filter);
        }
        for (ProjectedTrack& track : result_.projection.tracks)
            for (ProjectedEntry& entry : track.entries)
                for (ProjectedTransition& transition : entry.transitions)
                    checkTransition(transition);
        for (ProjectedTransition& transition : result_.projection.transitions)
            checkTransition(transition);
        return std::move(result_);
    }

private:
    void checkClip(ProjectedClip& clip)
    {
        const std::string medium = clip.service.empty() ? clip.resource : clip.service + ':' + clip.resource;
        if (const auto source = allowed_.sourceOf(medium)) {
            clip.service = source->service;
            clip.resource = source->resource;
            checkProperties(Use::Producer, clip.id, clip.service, clip.properties);
            return;
        }
        refuse(What::Clip, clip.id, inQuotes(medium) + " is not active. A project may show files and colours only.");
        clip.service = "color";
        clip.resource = kStandInColour;
        clip.properties.clear();
    }

    void checkFilter(ProjectedFilter& filter)
    {
        const Use use = filter.partOf.empty() ? Use::Filter : Use::MaskFilter;
        if (!allowed_.allowsService(use, filter.service)) {
            const std::string why =
                use == Use::Filter ? allowed_.refuseEffect(filter.service) : "It is no part of a mask.";
            refuse(What::Effect, filter.id, "The effect " + inQuotes(filter.service) + " is not active. " + why);
            result_.left.insert(filter.id);
            filter.service = kIdleEffect;
            filter.properties = {{"disable", "1"}};
            return;
        }
        checkProperties(use, filter.id, filter.service, filter.properties);
    }

    void checkTransition(ProjectedTransition& transition)
    {
        if (!allowed_.allowsService(Use::Transition, transition.service)) {
            refuse(What::Transition, transition.id,
                   "The transition " + inQuotes(transition.service) +
                       " is not active. It is none that a project may use.");
            result_.left.insert(transition.id);
            transition.service = kIdleTransition;
            transition.properties = {{"disable", "1"}};
            return;
        }
        checkProperties(Use::Transition, transition.id, transition.service, transition.properties);
    }

    void checkProperties(Use use, const std::string& id, const std::string& service, ProjectedProperties& properties)
    {
        std::erase_if(properties, [&](const ProjectedProperty& property) {
            if (allowed_.allowsProperty(use, service, property.name, property.value))
                return false;
            refuse(What::Setting, id,
                   "The setting " + inQuotes(property.name) + " of " + inQuotes(service) +
                       " is not used. It holds something that a project may not say.");
            return true;
        });
    }

    void refuse(What what, const std::string& subject, std::string message)
    {
        result_.refusals.push_back({what, subject, std::move(message)});
    }

    const AllowList& allowed_;
    Admission result_;
};
} // namespace

Admission admit(Projection projection, const AllowList& allowed)
{
    return Gate(std::move(projection), allowed).run();
}

} // namespace workbench
