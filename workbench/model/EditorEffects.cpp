#include "workbench/model/EditOperation.h"
#include "workbench/model/Editor.h"
#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/Ids.h"

#include <algorithm>

namespace workbench
{

using oribund::ChangeKind;
using namespace refusal;

namespace
{

/** Why no cue can be at that time; null when one can. */
const char* outsideTime(const oribund::Cue& cue)
{
    return !(cue.time >= 0.0) ? kBeforeStart : cue.time > kLatestCue ? kTooLate : nullptr;
}

bool cueAt(const oribund::CueList& cues, const oribund::Cue& wanted)
{
    return std::any_of(cues.begin(), cues.end(),
                       [&wanted](const oribund::Cue& cue) { return cue.id != wanted.id && cue.time == wanted.time; });
}
} // namespace

EditOutcome Editor::addEffect(ObjectId segment, const std::string& service, int index)
{
    const EffectCatalogue::Entry description = edit_.catalogue().find(service);
    if (!description)
        return EditOutcome::refuse("The effect \"" + service + "\" is not installed.");
    if (!description->blockedBecause.empty())
        return EditOutcome::refuse(description->title + " cannot be used: " + description->blockedBecause);
    EffectData data;
    data.service = service;
    return addEffect(segment, std::move(data), index);
}

EditOutcome Editor::addEffect(ObjectId id, EffectData data, int index)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    const Segment* const segment = edit_.timeline().findSegment(id);
    if (!segment)
        return EditOutcome::refuse(kNoSegment);
    const EffectCatalogue::Entry description = edit_.catalogue().find(data.service);
    const TrackKind kind = edit_.timeline().findTrack(segment->track)->data.kind;
    if (description && (description->medium == EffectDescription::Medium::Audio) != (kind == TrackKind::Audio))
        return EditOutcome::refuse(description->title + (kind == TrackKind::Audio ? " is an effect for pictures."
                                                                                  : " is an effect for sound."));
    visitWithMask(data, [this](EffectData& part) { part.id = edit_.newId(); });
    const int count = static_cast<int>(segment->effects.size());
    const int place = index < 0 ? count : std::min(index, count);
    EditOperation(edit_, "Add " + (description ? description->title : data.service))
        .perform(insertion(EffectRecord{id, place, data}));
    return EditOutcome::done(data.id);
}

EditOutcome Editor::removeEffect(ObjectId id)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return EditOutcome::refuse(kNoEffect);
    if (const ObjectId owner = edit_.timeline().effectOfMask(id); owner != kNoObject)
        return setMask(owner, false);
    EditOperation(edit_, "Remove " + titleOf(*effect))
        .perform(removal(EffectRecord{edit_.timeline().segmentOfEffect(id)->id(), edit_.timeline().effectIndex(id),
                                      effect->data()}));
    return EditOutcome::done(id);
}

EditOutcome Editor::moveEffect(ObjectId id, int index)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return EditOutcome::refuse(kNoEffect);
    if (edit_.timeline().effectOfMask(id) != kNoObject)
        return EditOutcome::refuse("A mask stays with its effect.");
    const int last = static_cast<int>(edit_.timeline().segmentOfEffect(id)->effects.size()) - 1;
    const EffectState before{id, edit_.timeline().effectIndex(id), effect->isEnabled()};
    EditOperation(edit_, "Move " + titleOf(*effect))
        .perform(assignment(before, EffectState{id, std::clamp(index, 0, last), before.enabled}));
    return EditOutcome::done(id);
}

EditOutcome Editor::setEffectsEnabled(std::span<const ObjectId> effects, bool enabled)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const Timeline& timeline = edit_.timeline();
    if (effects.empty() ||
        !std::all_of(effects.begin(), effects.end(), [&](ObjectId id) { return timeline.segmentOfEffect(id); }))
        return EditOutcome::refuse(kNoEffect);
    const std::string what = effects.size() == 1 ? titleOf(*timeline.findEffect(effects.front()))
                                                 : std::to_string(effects.size()) + " effects";
    EditOperation operation(edit_, (enabled ? "Switch on " : "Switch off ") + what);
    for (const ObjectId id : effects) {
        const EffectState before{id, timeline.effectIndex(id), timeline.findEffect(id)->isEnabled()};
        operation.perform(assignment(before, EffectState{id, before.index, enabled}));
    }
    return EditOutcome::done(effects.front());
}

int Editor::longestTransition(ObjectId left) const
{
    const Segment* const segment = edit_.timeline().findSegment(left);
    const Segment* const next = segment ? edit_.timeline().segmentAt(segment->track, segment->data.end()) : nullptr;
    return next ? longestBetween(edit_.timeline(), edit_.format(), *segment, *next) : 0;
}

EditOutcome Editor::addTransition(ObjectId left, const TransitionData& transition)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    const Segment* const segment = edit_.timeline().findSegment(left);
    const Segment* const next = segment ? edit_.timeline().segmentAt(segment->track, segment->data.end()) : nullptr;
    if (!next)
        return EditOutcome::refuse("A transition needs two segments that touch.");
    if (edit_.timeline().transitionOutOf(*segment))
        return EditOutcome::refuse("There is a transition at this cut already.");
    TransitionRecord record{segment->track, transition};
    record.data.id = edit_.newId();
    record.data.left = left;
    record.data.right = next->id();
    record.data.length = std::min(transition.length, longestTransition(left));
    if (record.data.length < 2)
        return EditOutcome::refuse("The media at this cut has no frames to spare for a transition.");
    EditOperation(edit_, "Add transition").perform(insertion(record));
    return EditOutcome::done(record.data.id);
}

EditOutcome Editor::changeTransition(const TransitionData& transition, ChangeKind kind)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    TransitionRecord before;
    const TransitionData* const found = edit_.timeline().findTransition(transition.id, &before.track);
    if (!found)
        return EditOutcome::refuse(kNoTransition);
    before.data = *found;
    TransitionRecord after{before.track, transition};
    after.data.left = before.data.left;
    after.data.right = before.data.right;
    after.data.length = std::clamp(transition.length, 2, longestTransition(before.data.left));
    EditOperation(edit_, "Change transition", kind).perform(assignment(before, after));
    return EditOutcome::done(transition.id);
}

EditOutcome Editor::removeTransition(ObjectId id)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    TransitionRecord record;
    const TransitionData* const found = edit_.timeline().findTransition(id, &record.track);
    if (!found)
        return EditOutcome::refuse(kNoTransition);
    record.data = *found;
    EditOperation(edit_, "Remove transition").perform(removal(record));
    return EditOutcome::done(id);
}

EditOutcome Editor::addCue(oribund::Cue cue)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    if (const char* reason = outsideTime(cue))
        return EditOutcome::refuse(reason);
    if (cueAt(edit_.getCues(), cue))
        return EditOutcome::refuse(kCueThere);
    cue.id = stampOf(edit_.newId());
    EditOperation(edit_, "Add cue").perform(insertion(cue));
    return EditOutcome::done(objectOf(cue.id));
}

EditOutcome Editor::changeCue(const oribund::Cue& cue, ChangeKind kind)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const oribund::Cue* const before = edit_.getCues().find(cue.id);
    if (!before)
        return EditOutcome::refuse(kNoCue);
    if (const char* reason = outsideTime(cue))
        return EditOutcome::refuse(reason);
    if (cueAt(edit_.getCues(), cue))
        return EditOutcome::refuse(kCueThere);
    EditOperation(edit_, "Change cue", kind).perform(assignment(*before, cue));
    return EditOutcome::done(objectOf(cue.id));
}

EditOutcome Editor::removeCue(const oribund::IdStamp& id)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const oribund::Cue* const cue = edit_.getCues().find(id);
    if (!cue)
        return EditOutcome::refuse(kNoCue);
    EditOperation(edit_, "Remove cue").perform(removal(*cue));
    return EditOutcome::done(objectOf(id));
}

EditOutcome Editor::unlink(ObjectId id)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const auto group = linkedGroup(edit_.timeline(), id);
    if (group.empty())
        return EditOutcome::refuse(kNoSegment);
    EditOperation operation(edit_, "Unlink " + group.front()->data.name);
    for (const Segment* segment : group)
        operation.perform(
            assignment(SegmentLink{segment->id(), segment->data.link}, SegmentLink{segment->id(), kNoObject}));
    return EditOutcome::done(id);
}

} // namespace workbench
