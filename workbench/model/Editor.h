#pragma once

#include "oribund/host/notify/ChangeKind.h"
#include "workbench/model/EditModel.h"
#include "workbench/model/EditOutcome.h"

#include <span>
#include <string>
#include <vector>

namespace workbench
{

/** What happens to segments that lie where another one is put. */
enum class Collision { Refuse, Overwrite };

/**
 * The operations on an edit's structure. Each one checks first, then does all or nothing, as one undo step; one that
 * takes a ChangeKind can be part of a drag (Start, Continuation ...), which is one step. A read-only edit refuses them
 * all. Frames are frames of the edit. A light object: make one where it is needed.
 */
class Editor
{
public:
    explicit Editor(EditModel& edit)
        : edit_(edit)
    {
    }

    EditOutcome addTrack(TrackKind kind, int index, const std::string& name);
    EditOutcome removeTrack(ObjectId track);
    EditOutcome setTrackEnabled(ObjectId track, bool enabled);
    EditOutcome renameTrack(ObjectId track, const std::string& name);

    struct Clip {
        MediaInfo media;
        int in = 0;
        int length = 0;                  ///< 0: all that there is; a still needs one
        ObjectId videoTrack = kNoObject; ///< none: no picture
        ObjectId audioTrack = kNoObject; ///< none: no sound
    };

    /** Puts a clip at a frame: a segment for its picture, one for its sound, linked. Yields the first of them. */
    EditOutcome addClip(const Clip& clip, int start, Collision collision = Collision::Refuse);

    /** Says where a media file is now and what is in it; all who show it show that. Refused where the edit uses more
        of it than there is. */
    EditOutcome relinkMedia(const MediaData& media);

    /** Removes the segment and those linked to it, with their transitions. */
    EditOutcome removeSegment(ObjectId segment);

    /** Moves the segment to a frame and a track of its kind; linked ones go along in time. */
    EditOutcome moveSegment(ObjectId segment, ObjectId track, int start, Collision collision = Collision::Refuse,
                            oribund::ChangeKind kind = oribund::ChangeKind::Single);

    /** Gives the segment and those linked to it another first or last-but-one frame; keyframes stay at their pictures.
        Refused where it runs out of media or into a neighbour. */
    EditOutcome trimStart(ObjectId segment, int start, oribund::ChangeKind kind = oribund::ChangeKind::Single);
    EditOutcome trimEnd(ObjectId segment, int end, oribund::ChangeKind kind = oribund::ChangeKind::Single);

    /** Cuts the segment and those linked to it in two; the effects go on unchanged across the cut. Yields the right
        half. */
    EditOutcome splitSegment(ObjectId segment, int frame);

    EditOutcome unlink(ObjectId segment);

    /** Adds an effect of the catalogue with its defaults. A negative index adds it as the last to be applied. */
    EditOutcome addEffect(ObjectId segment, const std::string& service, int index = -1);
    EditOutcome addEffect(ObjectId segment, EffectData effect, int index = -1);

    /** Removes an effect; or a mask. */
    EditOutcome removeEffect(ObjectId effect);
    EditOutcome moveEffect(ObjectId effect, int index);
    EditOutcome setEffectsEnabled(std::span<const ObjectId> effects, bool enabled);

    /** An empty name gives back the catalogue's. */
    EditOutcome renameEffect(ObjectId effect, const std::string& name);

    /** Limits where an effect is seen, by a mask with its defaults, or no longer. Yields the mask that came, or the
        effect. Refused for effects that cannot be masked. */
    EditOutcome setMask(ObjectId effect, bool present);

    /** All parameters of an effect, or of a mask, have their defaults; what was animated is constant. The mask of an
        effect stays as it is. */
    EditOutcome resetEffect(ObjectId effect);

    /** Every parameter that can be animated gets a keyframe at an effect time, with the value that it has there. */
    EditOutcome keyframeAll(ObjectId effect, double fxTime);

    /** Gives an effect the settings of another, and its mask if that has one. A setting of another kind of effect goes
        where name and type are the same; `note` says which ones went nowhere. */
    EditOutcome pasteSettings(const EffectData& from, ObjectId to);

    /** Joins two segments that touch. The length is reduced to what their media has to spare beyond the cut. */
    EditOutcome addTransition(ObjectId left, const TransitionData& transition);
    EditOutcome changeTransition(const TransitionData& transition,
                                 oribund::ChangeKind kind = oribund::ChangeKind::Single);
    EditOutcome removeTransition(ObjectId transition);

    /** The longest transition that the cut after a segment allows; 0 for none. */
    int longestTransition(ObjectId left) const;

    EditOutcome addCue(oribund::Cue cue);
    EditOutcome changeCue(const oribund::Cue& cue, oribund::ChangeKind kind = oribund::ChangeKind::Single);
    EditOutcome removeCue(const oribund::IdStamp& cue);

private:
    /** Why nothing may be changed now; null when it may. */
    const char* locked() const;

    /** The same for what makes objects. */
    const char* closed() const;

    EditModel& edit_;
};

} // namespace workbench
