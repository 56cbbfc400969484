#include "workbench/model/EditOperation.h"
#include "workbench/model/Editor.h"
#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/Ids.h"

#include <algorithm>
#include <cmath>

namespace workbench
{

using oribund::ChangeKind;

namespace
{
EditOutcome refuse(const std::string& reason)
{
    return {kNoObject, reason};
}

EditOutcome done(ObjectId object)
{
    return {object, {}};
}

const char kReadOnly[] = "The edit is read-only.";
const char kNoSegment[] = "There is no such segment.";
const char kNoEffect[] = "There is no such effect.";
const char kNoTransition[] = "There is no such transition.";
const char kNoCue[] = "There is no such cue.";
const char kCueThere[] = "There is a cue at that time already.";

std::string nameOf(const ModelEffect& effect)
{
    return std::string(oribund::toUTF8(effect.getName()).view());
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
        return refuse("The effect \"" + service + "\" is not installed.");
    if (!description->blockedBecause.empty())
        return refuse(description->title + " cannot be used: " + description->blockedBecause);
    EffectData data;
    data.service = service;
    return addEffect(segment, std::move(data), index);
}

EditOutcome Editor::addEffect(ObjectId id, EffectData data, int index)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const Segment* const segment = edit_.timeline().findSegment(id);
    if (!segment)
        return refuse(kNoSegment);
    const EffectCatalogue::Entry description = edit_.catalogue().find(data.service);
    const TrackKind kind = edit_.timeline().findTrack(segment->track)->data.kind;
    if (description && (description->medium == EffectDescription::Medium::Audio) != (kind == TrackKind::Audio))
        return refuse(description->title +
                      (kind == TrackKind::Audio ? " is an effect for pictures." : " is an effect for sound."));
    data.id = edit_.newId();
    const int count = static_cast<int>(segment->effects.size());
    const int place = index < 0 ? count : std::min(index, count);
    EditOperation(edit_, "Add " + (description ? description->title : data.service))
        .perform(insertion(EffectRecord{id, place, data}));
    return done(data.id);
}

EditOutcome Editor::removeEffect(ObjectId id)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return refuse(kNoEffect);
    EditOperation(edit_, "Remove " + nameOf(*effect))
        .perform(removal(EffectRecord{edit_.timeline().segmentOfEffect(id)->id(), edit_.timeline().effectIndex(id),
                                      effect->data()}));
    return done(id);
}

EditOutcome Editor::moveEffect(ObjectId id, int index)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return refuse(kNoEffect);
    const int last = static_cast<int>(edit_.timeline().segmentOfEffect(id)->effects.size()) - 1;
    const EffectState before{id, edit_.timeline().effectIndex(id), effect->isEnabled()};
    EditOperation(edit_, "Move " + nameOf(*effect))
        .perform(assignment(before, EffectState{id, std::clamp(index, 0, last), before.enabled}));
    return done(id);
}

EditOutcome Editor::setEffectsEnabled(std::span<const ObjectId> effects, bool enabled)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const Timeline& timeline = edit_.timeline();
    if (effects.empty() ||
        !std::all_of(effects.begin(), effects.end(), [&](ObjectId id) { return timeline.segmentOfEffect(id); }))
        return refuse(kNoEffect);
    const std::string what = effects.size() == 1 ? nameOf(*timeline.findEffect(effects.front()))
                                                 : std::to_string(effects.size()) + " effects";
    EditOperation operation(edit_, (enabled ? "Switch on " : "Switch off ") + what);
    for (const ObjectId id : effects) {
        const EffectState before{id, timeline.effectIndex(id), timeline.findEffect(id)->isEnabled()};
        operation.perform(assignment(before, EffectState{id, before.index, enabled}));
    }
    return done(effects.front());
}

int Editor::longestTransition(ObjectId left) const
{
    const Segment* const segment = edit_.timeline().findSegment(left);
    const Segment* const next = segment ? edit_.timeline().segmentAt(segment->track, segment->data.end()) : nullptr;
    return next ? longestBetween(edit_.timeline(), edit_.format(), *segment, *next) : 0;
}

EditOutcome Editor::addTransition(ObjectId left, const TransitionData& transition)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const Segment* const segment = edit_.timeline().findSegment(left);
    const Segment* const next = segment ? edit_.timeline().segmentAt(segment->track, segment->data.end()) : nullptr;
    if (!next)
        return refuse("A transition needs two segments that touch.");
    if (edit_.timeline().transitionOutOf(*segment))
        return refuse("There is a transition at this cut already.");
    TransitionRecord record{segment->track, transition};
    record.data.id = edit_.newId();
    record.data.left = left;
    record.data.right = next->id();
    record.data.length = std::min(transition.length, longestTransition(left));
    if (record.data.length < 2)
        return refuse("The media at this cut has no frames to spare for a transition.");
    EditOperation(edit_, "Add transition").perform(insertion(record));
    return done(record.data.id);
}

EditOutcome Editor::changeTransition(const TransitionData& transition, ChangeKind kind)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    TransitionRecord before;
    const TransitionData* const found = edit_.timeline().findTransition(transition.id, &before.track);
    if (!found)
        return refuse(kNoTransition);
    before.data = *found;
    TransitionRecord after{before.track, transition};
    after.data.left = before.data.left;
    after.data.right = before.data.right;
    after.data.length = std::clamp(transition.length, 2, longestTransition(before.data.left));
    EditOperation(edit_, "Change transition", kind).perform(assignment(before, after));
    return done(transition.id);
}

EditOutcome Editor::removeTransition(ObjectId id)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    TransitionRecord record;
    const TransitionData* const found = edit_.timeline().findTransition(id, &record.track);
    if (!found)
        return refuse(kNoTransition);
    record.data = *found;
    EditOperation(edit_, "Remove transition").perform(removal(record));
    return done(id);
}

EditOutcome Editor::addCue(oribund::Cue cue)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    if (!std::isfinite(cue.time) || cue.time < 0.0)
        return refuse("That is before the start of the edit.");
    if (cueAt(edit_.getCues(), cue))
        return refuse(kCueThere);
    cue.id = stampOf(edit_.newId());
    EditOperation(edit_, "Add cue").perform(insertion(cue));
    return done(objectOf(cue.id));
}

EditOutcome Editor::changeCue(const oribund::Cue& cue, ChangeKind kind)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const oribund::Cue* const before = edit_.getCues().find(cue.id);
    if (!before)
        return refuse(kNoCue);
    if (!std::isfinite(cue.time) || cue.time < 0.0)
        return refuse("That is before the start of the edit.");
    if (cueAt(edit_.getCues(), cue))
        return refuse(kCueThere);
    EditOperation(edit_, "Change cue", kind).perform(assignment(*before, cue));
    return done(objectOf(cue.id));
}

EditOutcome Editor::removeCue(const oribund::IdStamp& id)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const oribund::Cue* const cue = edit_.getCues().find(id);
    if (!cue)
        return refuse(kNoCue);
    EditOperation(edit_, "Remove cue").perform(removal(*cue));
    return done(objectOf(id));
}

EditOutcome Editor::unlink(ObjectId id)
{
    if (edit_.isReadOnly())
        return refuse(kReadOnly);
    const auto group = linkedGroup(edit_.timeline(), id);
    if (group.empty())
        return refuse(kNoSegment);
    EditOperation operation(edit_, "Unlink " + group.front()->data.name);
    for (const Segment* segment : group)
        operation.perform(
            assignment(SegmentLink{segment->id(), segment->data.link}, SegmentLink{segment->id(), kNoObject}));
    return done(id);
}

} // namespace workbench
