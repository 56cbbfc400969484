#include "workbench/model/Editor.h"

#include "workbench/model/EditOperation.h"

#include <algorithm>

namespace workbench
{

using oribund::ChangeKind;
using namespace refusal;

namespace
{
SegmentSet idsOf(const std::vector<const Segment*>& segments)
{
    SegmentSet ids;
    for (const Segment* segment : segments)
        ids.insert(segment->id());
    return ids;
}

/** Why no segment can start or end at a frame; null when one can. */
const char* outsideTime(int frame)
{
    return frame < 0 ? kBeforeStart : frame > kMostFrames ? kTooLate : nullptr;
}

/** Empty when all placements are possible: on the time line, in their media, free of other segments. */
std::string faultOf(const EditModel& edit, const std::vector<Placement>& placements, const SegmentSet& group,
                    Collision collision)
{
    const Timeline& timeline = edit.timeline();
    for (const Placement& placement : placements) {
        const MediaInfo& media = timeline.findMedia(timeline.findSegment(placement.segment)->data.media)->info;
        if (const char* reason = outsideTime(placement.start))
            return reason;
        if (std::max(placement.in, placement.length) > kMostFrames)
            return kTooLong;
        if (placement.length < 1)
            return "Nothing of the segment would be left.";
        if (placement.in < 0 ||
            (!media.isStill() && placement.in + placement.length > mediaLength(media, edit.format())))
            return kNoMedia;
        if (collision == Collision::Refuse &&
            !isFree(timeline, placement.track, placement.start, placement.end(), group))
            return kOccupied;
    }
    return {};
}

void place(EditOperation& operation, const Timeline& timeline, const std::vector<Placement>& placements,
           const SegmentSet& group)
{
    std::set<ObjectId> tracks;
    for (const Placement& placement : placements) {
        tracks.insert(placement.track);
        tracks.insert(timeline.findSegment(placement.segment)->track);
        operation.carve(placement.track, placement.start, placement.end(), group);
    }
    for (const Placement& placement : placements)
        operation.place(*timeline.findSegment(placement.segment), placement);
    for (const ObjectId track : tracks)
        operation.repairTransitions(track);
}
} // namespace

const char* Editor::locked() const
{
    if (edit_.isReadOnly())
        return kReadOnly;
    const UndoStack& undo = edit_.undoStack();
    return undo.isApplying() || undo.isBatchOpen() ? kBusy : nullptr;
}

const char* Editor::closed() const
{
    const char* const reason = locked();
    return reason || edit_.hasIds() ? reason : kFull;
}

EditOutcome Editor::addTrack(TrackKind kind, int index, const std::string& name)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    TrackRecord record;
    record.index = std::clamp(index, 0, static_cast<int>(edit_.timeline().tracks().size()));
    record.data.id = edit_.newId();
    record.data.kind = kind;
    record.data.name = name;
    EditOperation(edit_, "Add track " + name).perform(insertion(record));
    return EditOutcome::done(record.data.id);
}

EditOutcome Editor::removeTrack(ObjectId id)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const Track* const track = edit_.timeline().findTrack(id);
    if (!track)
        return EditOutcome::refuse(kNoTrack);
    EditOperation(edit_, "Remove track " + track->data.name)
        .perform(removal(TrackRecord{edit_.timeline().trackIndex(id), edit_.timeline().dataOf(*track)}));
    return EditOutcome::done(id);
}

EditOutcome Editor::setTrackEnabled(ObjectId id, bool enabled)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const Track* const track = edit_.timeline().findTrack(id);
    if (!track)
        return EditOutcome::refuse(kNoTrack);
    const TrackState before{id, track->data.name, track->data.enabled};
    EditOperation(edit_, std::string(enabled ? "Switch on track " : "Switch off track ") + before.name)
        .perform(assignment(before, TrackState{id, before.name, enabled}));
    return EditOutcome::done(id);
}

EditOutcome Editor::renameTrack(ObjectId id, const std::string& name)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const Track* const track = edit_.timeline().findTrack(id);
    if (!track)
        return EditOutcome::refuse(kNoTrack);
    const TrackState before{id, track->data.name, track->data.enabled};
    EditOperation(edit_, "Rename track " + before.name + " to " + name)
        .perform(assignment(before, TrackState{id, name, before.enabled}));
    return EditOutcome::done(id);
}

EditOutcome Editor::addClip(const Clip& clip, int start, Collision collision)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    if (const char* reason = outsideTime(start))
        return EditOutcome::refuse(reason);
    const Timeline& timeline = edit_.timeline();
    const int available = mediaLength(clip.media, edit_.format());
    const int length = clip.length > 0 ? clip.length : available - clip.in;
    if (std::max(clip.in, length) > kMostFrames)
        return EditOutcome::refuse(kTooLong);
    if (clip.in < 0 || length < 1 || (!clip.media.isStill() && clip.in + length > available))
        return EditOutcome::refuse(kNoMedia);

    std::vector<ObjectId> tracks;
    for (const auto& [id, kind, has] : {std::tuple(clip.videoTrack, TrackKind::Video, clip.media.hasVideo),
                                        std::tuple(clip.audioTrack, TrackKind::Audio, clip.media.hasAudio)}) {
        if (id == kNoObject || !has)
            continue;
        const Track* const track = timeline.findTrack(id);
        if (!track || track->data.kind != kind)
            return EditOutcome::refuse(kNoTrack);
        if (collision == Collision::Refuse && !isFree(timeline, id, start, start + length, {}))
            return EditOutcome::refuse(kOccupied);
        tracks.push_back(id);
    }
    if (tracks.empty())
        return EditOutcome::refuse("The media has nothing for that track.");

    SegmentData data;
    data.name = clip.media.path.substr(clip.media.path.find_last_of('/') + 1);
    data.start = start;
    data.in = clip.media.isStill() ? 0 : clip.in;
    data.length = length;
    EditOperation operation(edit_, "Add " + data.name);
    const auto known = std::find_if(timeline.media().begin(), timeline.media().end(),
                                    [&clip](const MediaData& media) { return media.info == clip.media; });
    data.media = known != timeline.media().end() ? known->id : edit_.newId();
    if (known == timeline.media().end())
        operation.perform(insertion(MediaData{data.media, clip.media}));
    data.link = tracks.size() > 1 ? edit_.newId() : kNoObject;
    ObjectId first = kNoObject;
    for (const ObjectId track : tracks) {
        operation.carve(track, start, start + length, {});
        data.id = edit_.newId();
        first = first == kNoObject ? data.id : first;
        operation.perform(insertion(SegmentRecord{track, data}));
        operation.repairTransitions(track);
    }
    return EditOutcome::done(first);
}

EditOutcome Editor::relinkMedia(const MediaData& media)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const Timeline& timeline = edit_.timeline();
    const MediaData* const before = timeline.findMedia(media.id);
    if (!before)
        return EditOutcome::refuse("There is no such media file in the edit.");
    std::set<ObjectId> tracks;
    for (const auto& track : timeline.tracks())
        for (const Segment* segment : track->segments) {
            if (segment->data.media != media.id)
                continue;
            tracks.insert(track->id());
            if (track->data.kind == TrackKind::Video ? !media.info.hasVideo : !media.info.hasAudio)
                return EditOutcome::refuse(track->data.kind == TrackKind::Video ? "It has no picture."
                                                                                : "It has no sound.");
            if (!media.info.isStill() &&
                segment->data.in + segment->data.length > mediaLength(media.info, edit_.format()))
                return EditOutcome::refuse("It is shorter than what the edit shows of it.");
        }
    EditOperation operation(edit_, "Find " + media.info.path.substr(media.info.path.find_last_of('/') + 1));
    operation.perform(assignment(*before, media));
    for (const ObjectId track : tracks)
        operation.repairTransitions(track);
    return EditOutcome::done(media.id);
}

EditOutcome Editor::removeSegment(ObjectId id)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const auto group = linkedGroup(edit_.timeline(), id);
    if (group.empty())
        return EditOutcome::refuse(kNoSegment);
    EditOperation operation(edit_, "Remove " + group.front()->data.name);
    for (const Segment* segment : group)
        operation.remove(*segment);
    return EditOutcome::done(id);
}

EditOutcome Editor::moveSegment(ObjectId id, ObjectId track, int start, Collision collision, ChangeKind kind)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    if (const char* reason = outsideTime(start))
        return EditOutcome::refuse(reason);
    const Timeline& timeline = edit_.timeline();
    if (!timeline.findSegment(id))
        return EditOutcome::refuse(kNoSegment);
    const std::string title = "Move " + timeline.findSegment(id)->data.name;
    // What an earlier place of a drag has overwritten comes back as the drag goes on.
    const bool rewound = collision == Collision::Overwrite && kind == ChangeKind::Continuation &&
                         edit_.undoStack().rewind(oribund::toWide(title));
    const auto refused = [&](const std::string& reason) {
        if (rewound)
            edit_.undoStack().replay();
        return EditOutcome::refuse(reason);
    };

    const auto group = linkedGroup(timeline, id);
    const Track* const from = timeline.findTrack(group.front()->track);
    const Track* const to = timeline.findTrack(track);
    if (!to || to->data.kind != from->data.kind)
        return refused(kNoTrack);

    std::vector<Placement> placements;
    for (const Segment* segment : group) {
        placements.push_back(segment->placement());
        placements.back().start += start - group.front()->data.start;
    }
    placements.front().track = track;
    const SegmentSet ids = idsOf(group);
    if (const std::string fault = faultOf(edit_, placements, ids, collision); !fault.empty())
        return refused(fault);
    EditOperation operation(edit_, title, kind);
    place(operation, timeline, placements, ids);
    return EditOutcome::done(id);
}

namespace
{
EditOutcome trim(EditModel& edit, ObjectId id, int startBy, int endBy, ChangeKind kind)
{
    const Timeline& timeline = edit.timeline();
    const auto group = linkedGroup(timeline, id);
    std::vector<Placement> placements;
    for (const Segment* segment : group) {
        Placement placement = segment->placement();
        placement.start += startBy;
        placement.length += endBy - startBy;
        if (!timeline.findMedia(segment->data.media)->info.isStill())
            placement.in += startBy;
        placements.push_back(placement);
    }
    const SegmentSet ids = idsOf(group);
    if (const std::string fault = faultOf(edit, placements, ids, Collision::Refuse); !fault.empty())
        return EditOutcome::refuse(fault);
    EditOperation operation(edit, "Trim " + group.front()->data.name, kind);
    place(operation, timeline, placements, ids);
    return EditOutcome::done(id);
}
} // namespace

EditOutcome Editor::trimStart(ObjectId id, int start, ChangeKind kind)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    if (const char* reason = outsideTime(start))
        return EditOutcome::refuse(reason);
    const Segment* const segment = edit_.timeline().findSegment(id);
    return segment ? trim(edit_, id, start - segment->data.start, 0, kind) : EditOutcome::refuse(kNoSegment);
}

EditOutcome Editor::trimEnd(ObjectId id, int end, ChangeKind kind)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    if (const char* reason = outsideTime(end))
        return EditOutcome::refuse(reason);
    const Segment* const segment = edit_.timeline().findSegment(id);
    return segment ? trim(edit_, id, 0, end - segment->data.end(), kind) : EditOutcome::refuse(kNoSegment);
}

EditOutcome Editor::splitSegment(ObjectId id, int frame)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    const auto group = linkedGroup(edit_.timeline(), id);
    if (group.empty())
        return EditOutcome::refuse(kNoSegment);
    const auto inside = [frame](const Segment* segment) {
        return segment->data.start < frame && frame < segment->data.end();
    };
    if (!inside(group.front()))
        return EditOutcome::refuse("There is nothing to cut there.");
    EditOperation operation(edit_, "Split " + group.front()->data.name);
    const ObjectId link = group.size() > 1 ? edit_.newId() : kNoObject;
    ObjectId right = kNoObject;
    for (const Segment* segment : group) {
        if (!inside(segment))
            continue;
        const ObjectId half = operation.split(*segment, frame, link);
        right = right == kNoObject ? half : right;
        operation.repairTransitions(segment->track);
    }
    return EditOutcome::done(right);
}

} // namespace workbench
