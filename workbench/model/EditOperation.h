#pragma once

#include "oribund/host/notify/ChangeKind.h"
#include "workbench/model/EditModel.h"

#include <set>
#include <string>
#include <vector>

namespace workbench
{

/** A set of segments that an operation is about, by id. */
using SegmentSet = std::set<ObjectId>;

/** The segment and all that are linked to it. Empty for an unknown one. */
std::vector<const Segment*> linkedGroup(const Timeline& timeline, ObjectId segment);

/** Whether no segment but the ignored ones lies in frames start..end-1 of a track. */
bool isFree(const Timeline& timeline, ObjectId track, int start, int end, const SegmentSet& ignored);

/** The longest transition between two segments, `right` starting where `left` ends; 0 when none of two frames fits. A
    transition between them that is there already does not count. */
int longestBetween(const Timeline& timeline, const FormatData& format, const Segment& left, const Segment& right);

/** A name as it stands in the text of an undo step: cut short where it is very long. */
std::string inTitle(const std::string& name);

/** The name of an effect in the text of an undo step. */
std::string titleOf(const ModelEffect& effect);

/**
 * An operation on an edit while it is being made: the bracket that makes it one undo step, and the steps of which
 * operations are composed. Everything has been checked before one is opened.
 */
class EditOperation
{
public:
    EditOperation(EditModel& edit, const std::string& title, oribund::ChangeKind kind = oribund::ChangeKind::Single);
    ~EditOperation();

    EditOperation(const EditOperation&) = delete;
    EditOperation& operator=(const EditOperation&) = delete;

    void perform(EditChangePtr change) { edit_.undoStack().perform(std::move(change)); }

    /** Puts a segment elsewhere. Where its start moves against its media, keyframes stay at their pictures. */
    void place(const Segment& segment, const Placement& placement);

    void remove(const Segment& segment);

    /** Cuts a segment at a frame inside it, with a keyframe on both sides where something moves across the cut; the
        right half belongs to the link group given. Yields that half. */
    ObjectId split(const Segment& segment, int frame, ObjectId link);

    /** Takes everything but the ignored segments out of frames start..end-1 of a track. */
    void carve(ObjectId track, int start, int end, const SegmentSet& ignored);

    /** Removes the transitions of a track whose segments no longer touch, and shortens those that are too long. */
    void repairTransitions(ObjectId track);

private:
    void trimTo(const Segment& segment, int start, int end);

    template <class Change>
    void changeAnimation(const Segment& segment, Change change);

    EditModel& edit_;
    const Timeline& timeline_;
};

} // namespace workbench
