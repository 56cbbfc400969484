#include "workbench/model/Timeline.h"

#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/Ids.h"

#include <algorithm>
#include <iterator>

namespace workbench
{

namespace
{
template <class Range>
auto byId(Range& range, ObjectId id)
{
    return std::find_if(std::begin(range), std::end(range), [id](const auto& item) { return item.id == id; });
}

template <class Range>
auto iteratorAt(Range& range, int index)
{
    return range.begin() + std::clamp(index, 0, static_cast<int>(range.size()));
}

/** Where the transition of that id is, or belongs. */
auto transitionPlace(std::vector<TransitionData>& transitions, ObjectId id)
{
    return std::lower_bound(transitions.begin(), transitions.end(), id,
                            [](const TransitionData& transition, ObjectId wanted) { return transition.id < wanted; });
}
} // namespace

Timeline::Timeline(const EffectCatalogue& catalogue, iModelEffectHost& host)
    : catalogue_(catalogue)
    , host_(host)
{
}

Timeline::~Timeline()
{
    for (const auto& [id, segment] : segments_)
        for (const auto& effect : segment->effects)
            effect->setHost(nullptr);
}

void Timeline::build(const EditData& data)
{
    for (const MediaData& media : data.media)
        insert(media);
    int index = 0;
    for (const TrackData& track : data.tracks)
        insert(TrackRecord{index++, track});
    for (const oribund::Cue& cue : data.cues)
        insert(cue);
}

void Timeline::snapshot(EditData& data) const
{
    data.media = media_;
    data.tracks.clear();
    for (const auto& track : tracks_)
        data.tracks.push_back(dataOf(*track));
    data.cues.assign(cues_.begin(), cues_.end());
}

const Track* Timeline::findTrack(ObjectId id) const
{
    return const_cast<Timeline*>(this)->track(id);
}

const Segment* Timeline::findSegment(ObjectId id) const
{
    const auto found = segments_.find(id);
    return found == segments_.end() ? nullptr : found->second.get();
}

const TransitionData* Timeline::findTransition(ObjectId id, ObjectId* track) const
{
    for (const auto& candidate : tracks_) {
        const auto& transitions = candidate->data.transitions;
        if (const auto found = byId(transitions, id); found != transitions.end()) {
            if (track)
                *track = candidate->id();
            return &*found;
        }
    }
    return nullptr;
}

const MediaData* Timeline::findMedia(ObjectId id) const
{
    const auto found = byId(media_, id);
    return found == media_.end() ? nullptr : &*found;
}

oribund::Kt::Ptr<ModelEffect> Timeline::findEffect(ObjectId id) const
{
    const Segment* const segment = segmentOfEffect(id);
    if (!segment)
        return {};
    const auto& effect = segment->effects[static_cast<std::size_t>(effectIndex(id))];
    return maskOwners_.contains(id) ? effect->mask() : effect;
}

ObjectId Timeline::effectOfMask(ObjectId mask) const
{
    const auto found = maskOwners_.find(mask);
    return found == maskOwners_.end() ? kNoObject : found->second;
}

const Segment* Timeline::segmentOfEffect(ObjectId effect) const
{
    const auto found = effectPlaces_.find(effect);
    return found == effectPlaces_.end() ? nullptr : found->second;
}

const Segment* Timeline::segmentAt(ObjectId id, int frame) const
{
    const Track* const where = findTrack(id);
    if (!where)
        return nullptr;
    const auto after = std::upper_bound(where->segments.begin(), where->segments.end(), frame,
                                        [](int f, const Segment* segment) { return f < segment->data.start; });
    if (after == where->segments.begin())
        return nullptr;
    const Segment* const candidate = *std::prev(after);
    return frame < candidate->data.end() ? candidate : nullptr;
}

const TransitionData* Timeline::transitionInto(const Segment& right) const
{
    for (const TransitionData& transition : findTrack(right.track)->data.transitions)
        if (transition.right == right.id())
            return &transition;
    return nullptr;
}

const TransitionData* Timeline::transitionOutOf(const Segment& left) const
{
    for (const TransitionData& transition : findTrack(left.track)->data.transitions)
        if (transition.left == left.id())
            return &transition;
    return nullptr;
}

int Timeline::endFrame() const
{
    int end = 0;
    for (const auto& track : tracks_)
        if (!track->segments.empty())
            end = std::max(end, track->segments.back()->data.end());
    return end;
}

int Timeline::trackIndex(ObjectId id) const
{
    const auto found =
        std::find_if(tracks_.begin(), tracks_.end(), [id](const auto& candidate) { return candidate->id() == id; });
    return found == tracks_.end() ? -1 : static_cast<int>(found - tracks_.begin());
}

int Timeline::effectIndex(ObjectId id) const
{
    const Segment* const segment = segmentOfEffect(id);
    if (!segment)
        return -1;
    const ObjectId owner = effectOfMask(id);
    const ObjectId effect = owner == kNoObject ? id : owner;
    const auto found = std::find_if(segment->effects.begin(), segment->effects.end(),
                                    [effect](const auto& candidate) { return objectOf(candidate->id()) == effect; });
    return static_cast<int>(found - segment->effects.begin());
}

SegmentData Timeline::dataOf(const Segment& segment) const
{
    SegmentData data = segment.data;
    for (const auto& effect : segment.effects)
        data.effects.push_back(effect->data());
    return data;
}

TrackData Timeline::dataOf(const Track& track) const
{
    TrackData data = track.data;
    for (const Segment* segment : track.segments)
        data.segments.push_back(dataOf(*segment));
    return data;
}

void Timeline::insert(const TrackRecord& record)
{
    used(record.data.id);
    auto added = std::make_unique<Track>();
    added->data = record.data;
    added->data.segments.clear();
    for (const TransitionData& transition : record.data.transitions)
        used(transition.id);
    tracks_.insert(iteratorAt(tracks_, record.index), std::move(added));
    for (const SegmentData& segment : record.data.segments)
        insert(SegmentRecord{record.data.id, segment});
}

void Timeline::erase(const TrackRecord& record)
{
    while (!track(record.data.id)->segments.empty()) {
        SegmentRecord last;
        last.data.id = track(record.data.id)->segments.back()->id();
        erase(last);
    }
    tracks_.erase(tracks_.begin() + trackIndex(record.data.id));
}

void Timeline::insert(const SegmentRecord& record)
{
    used(record.data.id);
    used(record.data.link);
    auto added = std::make_unique<Segment>();
    Segment& segment = *added;
    segment.data = record.data;
    segment.data.effects.clear();
    segment.track = record.track;
    segments_.emplace(record.data.id, std::move(added));
    place(segment);
    int index = 0;
    for (const EffectData& effect : record.data.effects)
        addEffect(segment, index++, effect);
}

void Timeline::erase(const SegmentRecord& record)
{
    Segment* const going = segment(record.data.id);
    while (!going->effects.empty())
        dropEffect(*going, objectOf(going->effects.back()->id()));
    unplace(*going);
    segments_.erase(record.data.id);
}

void Timeline::insert(const EffectRecord& record)
{
    addEffect(*segment(record.segment), record.index, record.data);
}

void Timeline::erase(const EffectRecord& record)
{
    dropEffect(*segment(record.segment), record.data.id);
}

void Timeline::insert(const MaskRecord& record)
{
    findEffect(record.effect)->applyMask(&record.data);
    noteMask(record.effect, record.data.id);
}

void Timeline::erase(const MaskRecord& record)
{
    const auto effect = findEffect(record.effect);
    forgetMask(*effect);
    effect->applyMask(nullptr);
}

void Timeline::insert(const TransitionRecord& record)
{
    used(record.data.id);
    auto& transitions = track(record.track)->data.transitions;
    transitions.insert(transitionPlace(transitions, record.data.id), record.data);
}

void Timeline::erase(const TransitionRecord& record)
{
    auto& transitions = track(record.track)->data.transitions;
    transitions.erase(transitionPlace(transitions, record.data.id));
}

void Timeline::insert(const MediaData& media)
{
    used(media.id);
    media_.push_back(media);
}

void Timeline::erase(const MediaData& media)
{
    media_.erase(byId(media_, media.id));
}

void Timeline::assign(const MediaData& media)
{
    *byId(media_, media.id) = media;
}

void Timeline::insert(const oribund::Cue& cue)
{
    used(objectOf(cue.id));
    cues_.add(cue);
}

void Timeline::erase(const oribund::Cue& cue)
{
    cues_.remove(cue.id);
}

void Timeline::assign(const Placement& placement)
{
    Segment& moved = *segment(placement.segment);
    unplace(moved);
    moved.track = placement.track;
    moved.data.start = placement.start;
    moved.data.in = placement.in;
    moved.data.length = placement.length;
    place(moved);
}

void Timeline::assign(const SegmentLink& link)
{
    segment(link.segment)->data.link = link.link;
}

void Timeline::assign(const EffectState& state)
{
    if (maskOwners_.contains(state.effect))
        return findEffect(state.effect)->applyEnabled(state.enabled);
    Segment& where = *effectPlaces_.at(state.effect);
    const auto from = where.effects.begin() + effectIndex(state.effect);
    const auto effect = *from;
    where.effects.erase(from);
    where.effects.insert(iteratorAt(where.effects, state.index), effect);
    effect->applyEnabled(state.enabled);
}

void Timeline::assign(const TransitionRecord& record)
{
    auto& transitions = track(record.track)->data.transitions;
    *transitionPlace(transitions, record.data.id) = record.data;
}

void Timeline::assign(const EffectName& name)
{
    findEffect(name.effect)->applyName(name.name);
}

void Timeline::assign(const ParamRecord& record)
{
    findEffect(record.effect)->applyParam(record.data);
}

void Timeline::assign(const TrackState& state)
{
    Track& changed = *track(state.track);
    changed.data.name = state.name;
    changed.data.enabled = state.enabled;
}

void Timeline::assign(const oribund::Cue& cue)
{
    cues_.remove(cue.id);
    cues_.add(cue);
}

Track* Timeline::track(ObjectId id)
{
    const int index = trackIndex(id);
    return index < 0 ? nullptr : tracks_[static_cast<std::size_t>(index)].get();
}

Segment* Timeline::segment(ObjectId id)
{
    const auto found = segments_.find(id);
    return found == segments_.end() ? nullptr : found->second.get();
}

void Timeline::place(Segment& segment)
{
    auto& segments = track(segment.track)->segments;
    const auto after = std::upper_bound(segments.begin(), segments.end(), segment.data.start,
                                        [](int start, const Segment* other) { return start < other->data.start; });
    segments.insert(after, &segment);
}

void Timeline::unplace(const Segment& segment)
{
    auto& segments = track(segment.track)->segments;
    const auto first = std::lower_bound(segments.begin(), segments.end(), segment.data.start,
                                        [](const Segment* other, int start) { return other->data.start < start; });
    segments.erase(std::find(first, segments.end(), &segment));
}

void Timeline::addEffect(Segment& segment, int index, const EffectData& data)
{
    used(data.id);
    auto effect = oribund::Kt::makePtr<ModelEffect>(data, catalogue_.find(data.service));
    effect->setHost(&host_);
    segment.effects.insert(iteratorAt(segment.effects, index), std::move(effect));
    effectPlaces_[data.id] = &segment;
    for (const EffectData& mask : data.mask)
        noteMask(data.id, mask.id);
}

void Timeline::dropEffect(Segment& segment, ObjectId effect)
{
    const auto place = segment.effects.begin() + effectIndex(effect);
    (*place)->setHost(nullptr);
    forgetMask(**place);
    segment.effects.erase(place);
    effectPlaces_.erase(effect);
}

void Timeline::noteMask(ObjectId effect, ObjectId mask)
{
    used(mask);
    effectPlaces_[mask] = effectPlaces_.at(effect);
    maskOwners_[mask] = effect;
}

void Timeline::forgetMask(const ModelEffect& effect)
{
    const auto mask = effect.mask();
    if (!mask)
        return;
    effectPlaces_.erase(objectOf(mask->id()));
    maskOwners_.erase(objectOf(mask->id()));
}

void Timeline::used(ObjectId id)
{
    highestId_ = std::max(highestId_, id);
}

} // namespace workbench
