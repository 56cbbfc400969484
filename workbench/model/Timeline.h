#pragma once

#include "oribund/host/base/Kt.h"
#include "oribund/host/edit/Cue.h"
#include "workbench/model/ModelEffect.h"
#include "workbench/model/Records.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace workbench
{

class EffectCatalogue;

/** A segment in place. `data.effects` is empty here: `effects` holds them live. */
struct Segment {
    SegmentData data;
    ObjectId track = kNoObject;
    std::vector<oribund::Kt::Ptr<ModelEffect>> effects;

    ObjectId id() const { return data.id; }

    Placement placement() const { return {data.id, track, data.start, data.in, data.length}; }
};

/** A track in place. `data.segments` is empty here: `segments` holds them live, in ascending time. */
struct Track {
    TrackData data;
    std::vector<Segment*> segments;

    ObjectId id() const { return data.id; }
};

/**
 * The live content of an edit. Reading is for everybody; the changing operations are for undo steps alone, check
 * nothing that the editor has already made sure of, and tell nobody. User-interface thread only.
 */
class Timeline
{
public:
    /** `host` is told what its effects' parameters do. Both outlive the timeline. */
    Timeline(const EffectCatalogue& catalogue, iModelEffectHost& host);
    ~Timeline();

    void build(const EditData& data);
    void snapshot(EditData& data) const;

    /** As shown, top first. Pointers stay valid as long as the object lives in the edit. */
    const std::vector<std::unique_ptr<Track>>& tracks() const { return tracks_; }

    const std::vector<MediaData>& media() const { return media_; }

    const oribund::CueList& cues() const { return cues_; }

    /** The look-ups yield null for an id that the edit does not hold. */
    const Track* findTrack(ObjectId id) const;
    const Segment* findSegment(ObjectId id) const;
    const TransitionData* findTransition(ObjectId id, ObjectId* track = nullptr) const;
    const MediaData* findMedia(ObjectId id) const;

    /** An effect or a mask. */
    oribund::Kt::Ptr<ModelEffect> findEffect(ObjectId id) const;

    /** Of a mask, that of its effect. */
    const Segment* segmentOfEffect(ObjectId effect) const;

    /** kNoObject for what is no mask. */
    ObjectId effectOfMask(ObjectId mask) const;

    /** The segment over that frame of a track, or null. */
    const Segment* segmentAt(ObjectId track, int frame) const;

    /** The transition of a track that joins the segment to the one before it (`right`) or after it (`left`), or null.
     */
    const TransitionData* transitionInto(const Segment& right) const;
    const TransitionData* transitionOutOf(const Segment& left) const;

    /** The frame after the last segment's last. */
    int endFrame() const;
    int trackIndex(ObjectId track) const;

    /** Of a mask, that of its effect. */
    int effectIndex(ObjectId effect) const;
    SegmentData dataOf(const Segment& segment) const;
    TrackData dataOf(const Track& track) const;

    ObjectId highestId() const { return highestId_; }

    void insert(const TrackRecord& record);
    void insert(const SegmentRecord& record);
    void insert(const EffectRecord& record);
    void insert(const MaskRecord& record);
    void insert(const TransitionRecord& record);
    void insert(const MediaData& media);
    void insert(const oribund::Cue& cue);

    void erase(const TrackRecord& record);
    void erase(const SegmentRecord& record);
    void erase(const EffectRecord& record);
    void erase(const MaskRecord& record);
    void erase(const TransitionRecord& record);
    void erase(const MediaData& media);
    void erase(const oribund::Cue& cue);

    void assign(const Placement& placement);
    void assign(const SegmentLink& link);
    void assign(const EffectState& state);
    void assign(const TransitionRecord& record);
    void assign(const EffectName& name);
    void assign(const ParamRecord& record);
    void assign(const TrackState& state);
    void assign(const MediaData& media);
    void assign(const oribund::Cue& cue);

private:
    Track* track(ObjectId id);
    Segment* segment(ObjectId id);
    void place(Segment& segment);
    void unplace(const Segment& segment);
    void addEffect(Segment& segment, int index, const EffectData& data);
    void dropEffect(Segment& segment, ObjectId effect);
    void noteMask(ObjectId effect, ObjectId mask);
    void forgetMask(const ModelEffect& effect);
    void used(ObjectId id);

    const EffectCatalogue& catalogue_;
    iModelEffectHost& host_;
    std::vector<std::unique_ptr<Track>> tracks_;
    std::unordered_map<ObjectId, std::unique_ptr<Segment>> segments_;
    std::unordered_map<ObjectId, Segment*> effectPlaces_; ///< masks included
    std::unordered_map<ObjectId, ObjectId> maskOwners_;
    std::vector<MediaData> media_;
    oribund::CueList cues_;
    ObjectId highestId_ = kNoObject;
};

} // namespace workbench
