#pragma once

#include "workbench/model/EditData.h"

#include <string>
#include <utility>

namespace workbench
{

/** What came of an operation: the object made or changed, or the reason why nothing was done, for a person to read. */
struct EditOutcome {
    ObjectId object = kNoObject;
    std::string refused;
    std::string note = {}; ///< what a person should know of what was done; mostly empty

    static EditOutcome done(ObjectId object) { return {object, {}}; }

    static EditOutcome refuse(std::string reason) { return {kNoObject, std::move(reason)}; }

    explicit operator bool() const { return refused.empty(); }
};

/** Reasons that several operations have. */
namespace refusal
{
inline constexpr char kReadOnly[] = "The edit is read-only.";
inline constexpr char kBusy[] = "The edit is being changed at this moment.";
inline constexpr char kNoSegment[] = "There is no such segment.";
inline constexpr char kNoTrack[] = "There is no such track.";
inline constexpr char kNoEffect[] = "There is no such effect.";
inline constexpr char kNoTransition[] = "There is no such transition.";
inline constexpr char kNoCue[] = "There is no such cue.";
inline constexpr char kCueThere[] = "There is a cue at that time already.";
inline constexpr char kOccupied[] = "Another segment is in the way.";
inline constexpr char kNoMedia[] = "The media has no more frames there.";
inline constexpr char kBeforeStart[] = "That is before the start of the edit.";
inline constexpr char kTooLate[] = "That is later than an edit can be.";
inline constexpr char kTooLong[] = "That is longer than an edit can be.";
inline constexpr char kFull[] = "The edit cannot hold any more. Go on in a new project.";
} // namespace refusal

} // namespace workbench
