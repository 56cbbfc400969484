#include "workbench/model/projection/Projector.h"

#include "workbench/model/EditModel.h"
#include "workbench/model/projection/MaskFilters.h"
#include "workbench/model/projection/ParamBaker.h"
#include "workbench/model/projection/ServiceText.h"

#include <algorithm>
#include <map>

namespace workbench
{

namespace
{
/** Frames that a segment shows before and after itself, in transitions. */
struct Reach {
    int head = 0; ///< before its start
    int tail = 0; ///< after its end
};

Reach reachOf(const Timeline& timeline, const Segment& segment)
{
    const TransitionData* const into = timeline.transitionInto(segment);
    const TransitionData* const outOf = timeline.transitionOutOf(segment);
    return {into ? into->before() : 0, outOf ? outOf->after() : 0};
}

/** The frame of the producer that shows a segment's first frame. A still has no frames before its own, so what a
    transition shows before it is counted in. */
int sourceIn(const Segment& segment, const MediaInfo& media, const Reach& reach)
{
    return media.isStill() ? reach.head : segment.data.in;
}

/** The mask, where the effect can have one. */
oribund::Kt::Ptr<ModelEffect> shownMask(const ModelEffect& effect)
{
    return effect.whyNoMask().empty() ? effect.mask() : nullptr;
}

/** The frames, counted from the segment's first, that an effect is projected for: where it is at work, as far as the
    segment is shown. Where the two have nothing in common it is the one that comes after. */
BakeSpan spanOf(const ModelEffect& effect, const Segment& segment, const Reach& reach)
{
    const int end = segment.data.length + reach.tail;
    const int first = std::max(-reach.head, effect.firstFrame() - segment.data.in);
    const int last = std::min(end - 1, effect.lastFrame() - segment.data.in);
    return first <= last ? BakeSpan{segment.data.length, first, last} : BakeSpan{segment.data.length, end, end};
}

class Projector
{
public:
    explicit Projector(const EditModel& edit)
        : edit_(edit)
        , timeline_(edit.timeline())
    {
    }

    Projection project()
    {
        const FormatData& format = edit_.format();
        result_.profile = {format.width,
                           format.height,
                           format.fpsNumerator,
                           format.fpsDenominator,
                           format.sampleAspectNumerator,
                           format.sampleAspectDenominator,
                           format.colourspace,
                           true};
        result_.length = std::max(timeline_.endFrame(), 1);
        addBackground();
        const auto& tracks = timeline_.tracks();
        for (auto track = tracks.rbegin(); track != tracks.rend(); ++track)
            addTrack(**track);
        return std::move(result_);
    }

private:
    void addBackground()
    {
        result_.clips.push_back({"background",
                                 "color",
                                 "black",
                                 0,
                                 result_.length - 1,
                                 {{"length", std::to_string(result_.length)}, {"mlt_image_format", "rgba"}},
                                 {}});
        ProjectedTrack track;
        track.id = "background-track";
        track.hide = ProjectedTrack::Hide::Audio;
        track.entries.push_back(clipEntry({"background", 0, result_.length - 1}));
        result_.tracks.push_back(std::move(track));
    }

    void addTrack(const Track& track)
    {
        const bool video = track.data.kind == TrackKind::Video;
        ProjectedTrack projected;
        projected.id = trackId(track.id());
        projected.name = track.data.name;
        projected.hide = !track.data.enabled ? ProjectedTrack::Hide::Both
                         : video             ? ProjectedTrack::Hide::Audio
                                             : ProjectedTrack::Hide::Video;
        addEntries(track, projected.entries);
        result_.tracks.push_back(std::move(projected));
        joinTrack(track, video);
    }

    void addEntries(const Track& track, std::vector<ProjectedEntry>& entries)
    {
        std::map<ObjectId, const TransitionData*> outOf;
        for (const TransitionData& transition : track.data.transitions)
            outOf[transition.left] = &transition;

        int at = 0;
        const TransitionData* into = nullptr;
        for (std::size_t i = 0; i < track.segments.size(); ++i) {
            const Segment& segment = *track.segments[i];
            const auto leaving = outOf.find(segment.id());
            const TransitionData* const out = leaving == outOf.end() ? nullptr : leaving->second;
            const Reach reach{into ? into->before() : 0, out ? out->after() : 0};
            const MediaInfo& media = timeline_.findMedia(segment.data.media)->info;
            result_.clips.push_back(clipOf(track, segment, media, reach));

            if (segment.data.start > at)
                entries.push_back(blankEntry(segment.data.start - at));
            const int in = sourceIn(segment, media, reach);
            const int alone = in + (into ? into->after() : 0);
            const int aloneEnd = in + segment.data.length - (out ? out->before() : 0);
            if (aloneEnd > alone)
                entries.push_back(clipEntry({clipId(segment.id()), alone, aloneEnd - 1}));
            if (out)
                entries.push_back(mixEntry(track, segment, in, *track.segments[i + 1], *out));
            at = segment.data.end();
            into = out;
        }
        if (result_.length > at)
            entries.push_back(blankEntry(result_.length - at));
    }

    static ProjectedEntry blankEntry(int length)
    {
        ProjectedEntry entry;
        entry.length = length;
        return entry;
    }

    static ProjectedEntry clipEntry(const ProjectedCut& cut)
    {
        ProjectedEntry entry;
        entry.kind = ProjectedEntry::Kind::Clip;
        entry.length = cut.out - cut.in + 1;
        entry.first = cut;
        return entry;
    }

    ProjectedEntry mixEntry(const Track& track, const Segment& left, int leftIn, const Segment& right,
                            const TransitionData& transition) const
    {
        ProjectedEntry entry;
        entry.kind = ProjectedEntry::Kind::Mix;
        entry.length = transition.length;
        const int from = leftIn + left.data.length - transition.before();
        entry.first = {clipId(left.id()), from, from + transition.length - 1};
        const Reach rightReach = reachOf(timeline_, right);
        const int rightIn =
            sourceIn(right, timeline_.findMedia(right.data.media)->info, rightReach) - transition.before();
        entry.second = {clipId(right.id()), rightIn, rightIn + transition.length - 1};

        ProjectedTransition join;
        join.id = "transition" + std::to_string(transition.id);
        join.out = transition.length - 1;
        if (track.data.kind == TrackKind::Video) {
            join.service = "luma";
            if (!transition.wipe.empty()) {
                join.properties.push_back({"resource", transition.wipe});
                join.properties.push_back({"softness", serviceNumber(transition.softness)});
                // The pattern is mirrored; played backwards it would begin with the incoming picture.
                join.properties.push_back({"invert", transition.reversed ? "1" : "0"});
            }
        } else {
            join.service = "mix";
            join.properties.push_back({"start", "-1"});
            join.properties.push_back({"accepts_blanks", "1"});
        }
        entry.transitions.push_back(std::move(join));
        return entry;
    }

    ProjectedClip clipOf(const Track& track, const Segment& segment, const MediaInfo& media, const Reach& reach) const
    {
        ProjectedClip clip;
        clip.id = clipId(segment.id());
        clip.resource = media.path;
        const int in = sourceIn(segment, media, reach);
        clip.in = in - reach.head;
        clip.out = in + segment.data.length - 1 + reach.tail;
        if (media.isStill())
            clip.properties.push_back({"length", std::to_string(clip.out + 1)});
        else
            clip.properties.push_back({track.data.kind == TrackKind::Video ? "audio_index" : "video_index", "-1"});
        const std::vector<std::string> names = namesOf(segment.effects);
        for (std::size_t i = 0; i < names.size(); ++i)
            addFilters(*segment.effects[i], names[i], in, spanOf(*segment.effects[i], segment, reach), clip.filters);
        return clip;
    }

    /** As in the list of effects; where several of a segment have the name, with their positions. */
    static std::vector<std::string> namesOf(const std::vector<oribund::Kt::Ptr<ModelEffect>>& effects)
    {
        std::map<std::string, int> counts;
        std::vector<int> positions;
        std::vector<std::string> names;
        for (const auto& effect : effects) {
            const auto& description = effect->description();
            names.push_back(!effect->ownName().empty() ? effect->ownName()
                            : description              ? description->title
                                                       : std::string(effect->tagTypeId().view()));
            positions.push_back(++counts[names.back()]);
        }
        for (std::size_t i = 0; i < names.size(); ++i)
            if (const int count = counts[names[i]]; count > 1)
                names[i] += " (" + std::to_string(positions[i]) + " of " + std::to_string(count) + ")";
        return names;
    }

    static void addFilters(const ModelEffect& effect, const std::string& name, int in, const BakeSpan& span,
                           std::vector<ProjectedFilter>& filters)
    {
        ProjectedFilter filter = filterOf(effect, in, span);
        filter.name = name;
        const auto mask = shownMask(effect);
        if (!mask) {
            filters.push_back(std::move(filter));
            return;
        }
        MaskFilters around = maskFilters(*mask, filter, span);
        filters.push_back(std::move(around.before));
        filters.push_back(std::move(filter));
        filters.push_back(std::move(around.shape));
        filters.push_back(std::move(around.after));
    }

    /** `in` is the frame of the producer that shows the segment's first. */
    static ProjectedFilter filterOf(const ModelEffect& effect, int in, const BakeSpan& span)
    {
        ProjectedFilter filter;
        filter.id = filterId(objectOf(effect.id()));
        filter.service = std::string(effect.tagTypeId().view());
        filter.in = in + span.first;
        filter.out = in + span.last;
        filter.properties.push_back({"disable", effect.isEnabled() ? "0" : "1"});
        if (const auto& description = effect.description()) {
            for (const auto& [name, value] : description->fixedProperties)
                filter.properties.push_back({name, value});
            for (int i = 0; i < effect.paramCount(); ++i)
                bakeParam(description->params[static_cast<std::size_t>(i)], *effect.paramAt(i), span,
                          filter.properties);
        } else {
            for (const auto& [name, value] : effect.rest())
                filter.properties.push_back({name, value});
        }
        return filter;
    }

    /** Lays the newest track over what lies below it. */
    void joinTrack(const Track& track, bool video)
    {
        ProjectedTransition join;
        join.bTrack = static_cast<int>(result_.tracks.size()) - 1;
        join.id = (video ? "overlay" : "sound") + std::to_string(track.id());
        // It keeps what it does not cover exact, and a clip of another shape in its shape.
        join.service = video ? "frei0r.cairoblend" : "mix";
        join.properties.push_back({"always_active", "1"});
        if (!video)
            join.properties.push_back({"sum", "1"});
        result_.transitions.push_back(std::move(join));
    }

    const EditModel& edit_;
    const Timeline& timeline_;
    Projection result_;
};
} // namespace

Projection project(const EditModel& edit)
{
    return Projector(edit).project();
}

std::vector<PropertyUpdate> projectParam(const EditModel& edit, const oribund::IdStamp& effectId,
                                         const oribund::IdStamp& paramId)
{
    const Timeline& timeline = edit.timeline();
    const auto effect = timeline.findEffect(objectOf(effectId));
    const int index = effect && effect->description() ? effect->indexOfParam(paramId) : -1;
    if (index < 0)
        return {};
    const Segment& segment = *timeline.segmentOfEffect(objectOf(effectId));
    const Reach reach = reachOf(timeline, segment);
    if (const auto masked = timeline.findEffect(timeline.effectOfMask(objectOf(effectId))))
        return shownMask(*masked) ? maskParamUpdates(*effect, index, spanOf(*masked, segment, reach))
                                  : std::vector<PropertyUpdate>();
    ProjectedProperties properties;
    bakeParam(effect->description()->params[static_cast<std::size_t>(index)], *effect->paramAt(index),
              spanOf(*effect, segment, reach), properties);
    std::vector<PropertyUpdate> updates;
    for (ProjectedProperty& property : properties)
        updates.push_back({filterId(objectOf(effectId)), std::move(property.name), std::move(property.value)});
    return updates;
}

std::vector<PropertyUpdate> projectEnabled(const EditModel& edit, const oribund::IdStamp& effectId)
{
    const ObjectId masked = edit.timeline().effectOfMask(objectOf(effectId));
    const ObjectId id = masked == kNoObject ? objectOf(effectId) : masked;
    const auto effect = edit.timeline().findEffect(id);
    if (!effect)
        return {};
    std::vector<PropertyUpdate> updates{{filterId(id), "disable", effect->isEnabled() ? "0" : "1"}};
    if (const auto mask = shownMask(*effect))
        for (PropertyUpdate& update : maskSwitchUpdates(*mask, effect->isEnabled()))
            updates.push_back(std::move(update));
    return updates;
}

std::string filterId(ObjectId effect)
{
    return "effect" + std::to_string(effect);
}

std::string clipId(ObjectId segment)
{
    return "clip" + std::to_string(segment);
}

std::string trackId(ObjectId track)
{
    return "track" + std::to_string(track);
}

} // namespace workbench
