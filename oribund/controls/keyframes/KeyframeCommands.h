#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/effects/keyframes/KeyframeSet.h"

#include <vector>

namespace oribund
{

class CompoundEffectKeyframes;
class CompoundEffectMonitor;
class UIString;
class Vob;
struct FXTime;

/**
 * What the user does with the keyframes of a track, from whatever control. Made for one command: it outlives
 * the control that asked, if the command destroys that. Edits are one undo step each; they return whether anything has
 * changed, and do nothing where they are not allowed. User-interface thread only.
 */
class ORIBUND_API KeyframeCommands
{
public:
    using Keyframes = std::vector<FXKeyframeHelpers::FXKeyframe>;

    /** Null for a viewer that is gone: no command does anything then. */
    KeyframeCommands(Vob* vob, const IdStamp& track)
        : vob_(vob)
        , track_(track)
    {
    }

    /** Null without an edit. */
    CompoundEffectMonitor* monitor() const;

    /** Whether there is an edit that is not read-only. */
    bool canEdit() const;

    void stopPlay() const;

    /** Stops play, and moves the current time to the next keyframe of the track, or the previous one. */
    void goToAdjacent(bool forward) const;

    void select(const Keyframes& keyframes, bool select) const;

    /** Selects those that are not selected, and deselects the others. */
    void toggle(const Keyframes& keyframes) const;

    /** Of all effects. */
    void selectAll(bool select) const;

    /** How many are selected, of the track or of all effects. */
    int countSelectedOnTrack() const;
    int countSelected() const;

    /** Whether the current time is within one of the track's effects at least. */
    bool isWithinEffects() const;

    /** One for every animated parameter. */
    bool addAtCurrentTime() const;
    bool removeAtCurrentTime() const;

    bool removeSelected() const;

    /** The selected ones or, when none is selected, those at the current time. */
    bool removeSelectedOrHere() const;

    /** By whole frames. */
    bool moveSelected(int frames) const;

    /** By a time, as a part of a gesture that the monitor's endTrim() ends. */
    bool trimSelected(double delta) const;

private:
    using EditAt = bool (CompoundEffectKeyframes::*)(const IdStamp& track, const IdStamp& effect, FXTime time);

    bool editAtCurrentTime(EditAt edit, const UIString& title) const;

    Vob* vob_;
    IdStamp track_;
};

} // namespace oribund
