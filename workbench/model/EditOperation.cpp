#include "workbench/model/EditOperation.h"

#include "workbench/model/KeyframeTimes.h"

#include <algorithm>
#include <limits>

namespace workbench
{

namespace
{
constexpr int kUnlimited = std::numeric_limits<int>::max() / 4;

/** Frames of media that lie unused after and before a segment. */
int spareAfter(const Timeline& timeline, const FormatData& format, const Segment& segment)
{
    const MediaInfo& media = timeline.findMedia(segment.data.media)->info;
    return media.isStill() ? kUnlimited : mediaLength(media, format) - segment.data.in - segment.data.length;
}

int spareBefore(const Timeline& timeline, const Segment& segment)
{
    return timeline.findMedia(segment.data.media)->info.isStill() ? kUnlimited : segment.data.in;
}
} // namespace

std::vector<const Segment*> linkedGroup(const Timeline& timeline, ObjectId id)
{
    const Segment* const segment = timeline.findSegment(id);
    if (!segment)
        return {};
    std::vector<const Segment*> group{segment};
    if (segment->data.link == kNoObject)
        return group;
    for (const auto& track : timeline.tracks())
        for (const Segment* other : track->segments)
            if (other != segment && other->data.link == segment->data.link)
                group.push_back(other);
    return group;
}

bool isFree(const Timeline& timeline, ObjectId track, int start, int end, const SegmentSet& ignored)
{
    const auto& segments = timeline.findTrack(track)->segments;
    return std::none_of(segments.begin(), segments.end(), [&](const Segment* segment) {
        return segment->data.start < end && start < segment->data.end() && !ignored.contains(segment->id());
    });
}

int longestBetween(const Timeline& timeline, const FormatData& format, const Segment& left, const Segment& right)
{
    const TransitionData* const earlier = timeline.transitionInto(left);
    const TransitionData* const later = timeline.transitionOutOf(right);
    const int leftRoom = left.data.length - (earlier ? earlier->after() : 0);
    const int rightRoom = right.data.length - (later ? later->before() : 0);
    const int before = std::min(spareBefore(timeline, right), leftRoom);
    const int after = std::min(spareAfter(timeline, format, left), rightRoom);
    const int longest = std::min(2 * before + 1, 2 * after);
    return longest < 2 ? 0 : longest;
}

std::string inTitle(const std::string& name)
{
    constexpr std::size_t kLongest = 60;
    const oribund::WString text = oribund::toWide(name);
    if (text.size() <= kLongest)
        return name;
    oribund::WString cut(text.view().substr(0, kLongest));
    cut += L"\u2026";
    return std::string(oribund::toUTF8(cut).view());
}

std::string titleOf(const ModelEffect& effect)
{
    return inTitle(std::string(oribund::toUTF8(effect.getName()).view()));
}

EditOperation::EditOperation(EditModel& edit, const std::string& title, oribund::ChangeKind kind)
    : edit_(edit)
    , timeline_(edit.timeline())
{
    edit_.undoStack().beginModify(oribund::toWide(title), kind);
}

EditOperation::~EditOperation()
{
    edit_.undoStack().endModify();
}

template <class Change>
void EditOperation::changeAnimation(const Segment& segment, Change change)
{
    const auto changeAll = [&](const ModelEffect& effect) {
        for (const ParamData& param : effect.animatedParams())
            perform(assignment(ParamRecord{objectOf(effect.id()), param},
                               ParamRecord{objectOf(effect.id()), change(param)}));
    };
    for (const auto& effect : segment.effects) {
        changeAll(*effect);
        if (const auto mask = effect->mask())
            changeAll(*mask);
    }
}

void EditOperation::place(const Segment& segment, const Placement& placement)
{
    const Placement before = segment.placement();
    const bool retimed = placement.in != before.in || placement.length != before.length;
    if (retimed) {
        // A still has the same picture everywhere, so its keyframes stay at their places in the edit.
        const bool still = timeline_.findMedia(segment.data.media)->info.isStill();
        const int shift = still ? before.start - placement.start : before.in - placement.in;
        const KeyframeTimes times(before.length, placement.length, shift);
        changeAnimation(segment, [&times](const ParamData& param) { return times.moved(param); });
    }
    perform(assignment(before, placement));
}

void EditOperation::remove(const Segment& segment)
{
    if (const TransitionData* into = timeline_.transitionInto(segment))
        perform(removal(TransitionRecord{segment.track, *into}));
    if (const TransitionData* outOf = timeline_.transitionOutOf(segment))
        perform(removal(TransitionRecord{segment.track, *outOf}));
    perform(removal(SegmentRecord{segment.track, timeline_.dataOf(segment)}));
}

ObjectId EditOperation::split(const Segment& segment, int frame, ObjectId link)
{
    const int leftLength = frame - segment.data.start;
    // Each half gets a keyframe at the cut, and keeps those beyond it: they shape the curve, and a trim brings them
    // back.
    const double cut = KeyframeTimes::toTime(leftLength, segment.data.length);
    changeAnimation(segment, [cut](const ParamData& param) { return KeyframeTimes::divided(param, cut); });
    SegmentRecord right{segment.track, timeline_.dataOf(segment)};
    const KeyframeTimes times(segment.data.length, segment.data.length - leftLength, -leftLength);
    right.data.id = edit_.newId();
    right.data.link = link;
    right.data.start = frame;
    right.data.length -= leftLength;
    if (!timeline_.findMedia(segment.data.media)->info.isStill())
        right.data.in += leftLength;
    for (EffectData& effect : right.data.effects)
        visitWithMask(effect, [&](EffectData& part) {
            part.id = edit_.newId();
            for (ParamData& param : part.params)
                param = times.moved(param);
        });

    Placement left = segment.placement();
    left.length = leftLength;
    const TransitionData* const outOf = timeline_.transitionOutOf(segment);
    const TransitionRecord before = outOf ? TransitionRecord{segment.track, *outOf} : TransitionRecord{};
    place(segment, left);
    perform(insertion(right));
    if (before.data.id != kNoObject) {
        TransitionRecord after = before;
        after.data.left = right.data.id;
        perform(assignment(before, after));
    }
    return right.data.id;
}

void EditOperation::carve(ObjectId track, int start, int end, const SegmentSet& ignored)
{
    const std::vector<Segment*> segments = timeline_.findTrack(track)->segments;
    for (const Segment* segment : segments) {
        const SegmentData& data = segment->data;
        if (data.end() <= start || end <= data.start || ignored.contains(data.id))
            continue;
        if (start <= data.start && data.end() <= end) {
            remove(*segment);
        } else if (start <= data.start) {
            trimTo(*segment, end, data.end());
        } else {
            if (end < data.end())
                split(*segment, end, kNoObject);
            trimTo(*segment, data.start, start);
        }
    }
}

void EditOperation::repairTransitions(ObjectId track)
{
    const std::vector<TransitionData> transitions = timeline_.findTrack(track)->data.transitions;
    for (const TransitionData& transition : transitions) {
        const Segment* const left = timeline_.findSegment(transition.left);
        const Segment* const right = timeline_.findSegment(transition.right);
        const bool touches =
            left && right && left->track == track && right->track == track && left->data.end() == right->data.start;
        TransitionRecord after{track, transition};
        if (touches)
            after.data.length = std::min(transition.length, longestBetween(timeline_, edit_.format(), *left, *right));
        if (!touches || after.data.length < 2)
            perform(removal(TransitionRecord{track, transition}));
        else
            perform(assignment(TransitionRecord{track, transition}, after));
    }
}

void EditOperation::trimTo(const Segment& segment, int start, int end)
{
    Placement placement = segment.placement();
    if (!timeline_.findMedia(segment.data.media)->info.isStill())
        placement.in += start - placement.start;
    placement.start = start;
    placement.length = end - start;
    place(segment, placement);
}

} // namespace workbench
