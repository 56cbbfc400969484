#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/EffectModification.h"
#include "oribund/host/edit/monitor/EffectChangeRelay.h"
#include "oribund/host/edit/monitor/TrackEffects.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/keyframes/KeyframeSelection.h"
#include "oribund/host/effects/keyframes/KeyframeSet.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace oribund
{

class FollowedSelection;
class KeyframeClip;
class KeyframeRemoval;
class KeyframeTrim;
class TrackKeyframes;
class Vob;

/**
 * The keyframes of all effects of a track: the sets, the selection that all views share, and the edits that reach over
 * several parameters.
 *
 * IdStamp::wildcard() as an effect stands for all effects of the edit, an invalid stamp as a parameter for all
 * parameters. Each edit is one undo step, and one notification of what the host tells of it; a read-only edit refuses
 * it. Edits return whether anything has changed. User-interface thread only.
 */
class ORIBUND_API CompoundEffectKeyframes : public TrackEffects
{
public:
    using KeyframeSet = FXKeyframeHelpers::KeyframeSet;
    using KeyframeSets = std::map<Kt::Ptr<EffectInstance>, KeyframeSet>;

    ~CompoundEffectKeyframes() override;

    /** Brings `sets` in step: one for each effect of the track. */
    void populateKeyframesForCompoundEffect(const IdStamp& track, KeyframeSets& sets);

    /** Over all effects of the track. */
    int getNumKeyframedParams(const IdStamp& track);

    // Selection

    const KeyframeSelection& keyframeSelection() const;

    /** Ignores what is no keyframe. */
    void selectKeyframe(const FXKeyframeHelpers::FXKeyframe& keyframe, bool select);
    void selectAllKeyframes(const IdStamp& effect, const IdStamp& param, bool select);
    int getNumKeyframesSelected(const IdStamp& effect, const IdStamp& param) const;

    // Edits

    /** Adds a keyframe to every animated parameter of one effect of the track that has none there; the values stay. */
    bool addKeyframesAt(const IdStamp& track, const IdStamp& effect, FXTime time);

    /** Removes those of one effect at that time. A parameter that loses its last one becomes constant. */
    bool removeKeyframesAt(const IdStamp& track, const IdStamp& effect, FXTime time);
    bool removeSelectedKeyframes(const IdStamp& effect, const IdStamp& param);

    /**
     * Moves the selected keyframes of a track's effects by edit time, in whole frames. Nothing passes a keyframe that
     * stays or an end of its effect: where one has to stop, all of them do. All calls up to endTrim() are one gesture:
     * what was asked for adds up, so that a way back over what was refused is not lost either. It is over before that
     * when anything but a move ends it, such as an undo: it does nothing from then on.
     */
    bool trimSelectedKeyframes(const IdStamp& track, double delta);

    /** Ends the gesture; what was moved stays. */
    void endTrim();

    /** Ends the gesture, and takes back what it moved. */
    void cancelTrim();

    /** Announces the next change of a gesture, up to endTrim() or cancelTrim(): the backups of one gesture are one undo
        step of the edit. A host that is to know of them overrides this, and calls it. */
    virtual void makeBackup(BackupKind kind, const EffectModification& modification);

    // Copies

    /** The selected keyframes of the effect and parameter, or of all. */
    KeyframeClip copySelectedKeyframes(const IdStamp& effect, const IdStamp& param) const;

    /** One parameter to paste to. */
    struct PasteTarget {
        IdStamp effect;
        IdStamp param;
    };

    /**
     * Puts copied keyframes at the current time: the earliest of them there, the others as far from it, in seconds, as
     * they were. Each goes to its own parameter where the track has its effect, else to that of the same name and type
     * of an effect of the same kind, else of any other. With a target, all go there. What finds no place is left out.
     * What was pasted is selected. Yields how many were.
     */
    int pasteKeyframes(const IdStamp& track, const KeyframeClip& clip,
                       const std::optional<PasteTarget>& target = std::nullopt);

    // The current time

    /** The edit time of the next keyframe of the track's effects, or of the previous one; none when there is none. */
    std::optional<double> findAdjacentKeyframe(const IdStamp& track, bool forward);

    /** Moves the current time there. */
    bool moveToAdjacentKeyframe(const IdStamp& track, bool forward);

protected:
    explicit CompoundEffectKeyframes(Vob& vob);

    /** For the derived class: brings sets and selection in step with what has changed, before anybody is told. */
    void noteChange(const EffectChangeDescription& change);

    /** By which clients are told: an edit made here reaches them as one change. */
    EffectChangeRelay& relay() { return relay_; }

    /** Null once the viewer is gone. */
    Vob* vob() const { return vob_; }

    void forgetVob() { vob_ = nullptr; }

private:
    class Editing;

    bool canEdit() const;
    Kt::Ptr<EffectInstance> findAtWork(const IdStamp& track, const IdStamp& id) const;
    std::vector<Kt::Ptr<EffectInstance>> effectsMeant(const IdStamp& effect) const;
    bool remove(const KeyframeRemoval& removal);
    std::shared_ptr<KeyframeTrim> beginTrim(const IdStamp& track);
    void select(KeyframeTrim& trim);
    void followKeyframes();
    void tellSelection(const IdStamp& effect, const IdStamp& param);

    Vob* vob_;
    EffectChangeRelay relay_;
    std::unique_ptr<FollowedSelection> selection_;
    std::unique_ptr<TrackKeyframes> keyframes_;
    std::shared_ptr<KeyframeTrim> trim_; ///< the gesture under way
    EditGesture gesture_;                ///< that was announced
    int editing_ = 0;
    std::vector<KeyframeSelection::Key> changed_; ///< of which the selection does not know yet
};

} // namespace oribund
