#pragma once

#include "workbench/model/EditData.h"

namespace workbench
{

// The units in which an edit's structure changes. Those that hold `data` are put in and taken out whole; the others
// replace a few fields of an object that stays.

struct TrackRecord {
    int index = 0;
    TrackData data;
};

struct SegmentRecord {
    ObjectId track = kNoObject;
    SegmentData data;
};

struct EffectRecord {
    ObjectId segment = kNoObject;
    int index = 0;
    EffectData data;
};

/** The mask of an effect. */
struct MaskRecord {
    ObjectId effect = kNoObject;
    EffectData data;
};

struct TransitionRecord {
    ObjectId track = kNoObject;
    TransitionData data;

    bool operator==(const TransitionRecord&) const = default;
};

/** Where a segment lies. */
struct Placement {
    ObjectId segment = kNoObject;
    ObjectId track = kNoObject;
    int start = 0;
    int in = 0;
    int length = 0;

    int end() const { return start + length; }

    bool operator==(const Placement&) const = default;
};

/** Where in its segment an effect is applied, and whether it is. */
struct EffectState {
    ObjectId effect = kNoObject;
    int index = 0;
    bool enabled = true;

    bool operator==(const EffectState&) const = default;
};

struct EffectName {
    ObjectId effect = kNoObject;
    std::string name;

    bool operator==(const EffectName&) const = default;
};

/** A parameter's whole setting, where single keyframes would be too small a unit. */
struct ParamRecord {
    ObjectId effect = kNoObject;
    ParamData data;

    bool operator==(const ParamRecord&) const = default;
};

struct SegmentLink {
    ObjectId segment = kNoObject;
    ObjectId link = kNoObject;

    bool operator==(const SegmentLink&) const = default;
};

struct TrackState {
    ObjectId track = kNoObject;
    std::string name;
    bool enabled = true;

    bool operator==(const TrackState&) const = default;
};

} // namespace workbench
