#pragma once

#include "oribund/host/edit/Cue.h"
#include "oribund/host/effects/curves/Keyframe.h"
#include "workbench/model/MediaInfo.h"

#include <array>
#include <limits>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace workbench
{

/**
 * An edit as plain values: what is saved, what undo steps hold, what tests compare. EditModel is made from it and gives
 * it back. Ids are numbers above 0, unique within the edit over all kinds of object. Frames are whole frames of the
 * edit's rate.
 */
using ObjectId = int;

inline constexpr ObjectId kNoObject = 0;

// What an edit can hold: the same whether it is made or read from a file.
inline constexpr ObjectId kHighestId = std::numeric_limits<ObjectId>::max() / 2;
/** The latest start of a segment, and its greatest length: nine days at 25 a second. Sums of frames stay small. */
inline constexpr int kMostFrames = 20'000'000;
inline constexpr double kLatestCue = 1e9; ///< seconds

/** A parameter's constant: a number or angle in shown units, a switch, a list item's raw text, a colour, a point. The
    choice of a video input is its index, as text. */
using PlainValue = std::variant<double, bool, std::string, std::array<double, 4>, std::array<double, 2>>;

/** The keyframes of one channel, in ascending effect time (0 at the segment's start, 1 at its end). */
using ChannelData = std::vector<oribund::Keyframe>;

struct ParamData {
    std::string property;
    PlainValue constant;
    bool keyframed = false;
    std::vector<ChannelData> channels; ///< one for a number; 4 for a colour, 2 for a point, with the same times

    bool operator==(const ParamData&) const = default;
};

using PropertyList = std::vector<std::pair<std::string, std::string>>;

/**
 * An effect. What the catalogue does not describe is kept as it was: parameters that it does not know stay in `params`,
 * and the service's own properties in `rest`, which are what is played while the whole effect is unknown.
 */
struct EffectData {
    ObjectId id = kNoObject;
    std::string service;
    bool enabled = true;
    std::vector<ParamData> params;
    PropertyList rest;
    int first = 0; ///< frames of the media between which it is at work: all, unless another program set them
    int last = std::numeric_limits<int>::max();
    std::string name = {};             ///< that a person gave it; empty: the catalogue's
    std::vector<EffectData> mask = {}; ///< none or one, an effect of maskDescription()

    bool operator==(const EffectData&) const = default;
};

/** Calls `visit` for an effect and for its mask. */
template <class Effect, class Visit>
void visitWithMask(Effect& effect, Visit visit)
{
    visit(effect);
    for (auto& mask : effect.mask)
        visit(mask);
}

/** A part of a media file on a track. */
struct SegmentData {
    ObjectId id = kNoObject;
    ObjectId media = kNoObject;
    ObjectId link = kNoObject; ///< equal for picture and sound that are edited together; kNoObject for a single one
    std::string name;
    int start = 0; ///< frame of the edit
    int in = 0;    ///< first frame of the media that is used, counted in the edit's rate
    int length = 0;
    std::vector<EffectData> effects; ///< in the order in which they are applied

    int end() const { return start + length; }

    bool operator==(const SegmentData&) const = default;
};

/** A transition between two segments that touch, centred on the cut. */
struct TransitionData {
    ObjectId id = kNoObject;
    ObjectId left = kNoObject; ///< the outgoing segment
    ObjectId right = kNoObject;
    int length = 0;   ///< frames; half of them, rounded down, lie before the cut
    std::string wipe; ///< resource of a luma map; empty for a dissolve, and for sound
    bool reversed = false;
    double softness = 0.0; ///< of the wipe's edge, 0..1

    int before() const { return length / 2; }

    int after() const { return length - length / 2; }

    bool operator==(const TransitionData&) const = default;
};

enum class TrackKind { Video, Audio };

struct TrackData {
    ObjectId id = kNoObject;
    TrackKind kind = TrackKind::Video;
    std::string name;
    bool enabled = true;                     ///< seen or heard
    std::vector<SegmentData> segments;       ///< in ascending time, without overlap
    std::vector<TransitionData> transitions; ///< in ascending id

    bool operator==(const TrackData&) const = default;
};

struct MediaData {
    ObjectId id = kNoObject;
    MediaInfo info;

    bool operator==(const MediaData&) const = default;
};

struct FormatData {
    int width = 1920;
    int height = 1080;
    int fpsNumerator = 25;
    int fpsDenominator = 1;
    int sampleAspectNumerator = 1;
    int sampleAspectDenominator = 1;
    int colourspace = 709;

    /** Seconds. */
    double frameLength() const { return static_cast<double>(fpsDenominator) / fpsNumerator; }

    bool operator==(const FormatData&) const = default;
};

struct EditData {
    std::string name;
    FormatData format;
    std::vector<MediaData> media;
    std::vector<TrackData> tracks; ///< as shown, top first; a picture lies over those of later tracks
    std::vector<oribund::Cue> cues;
    std::string original; ///< the file of another program that this came from: it may hold more than an edit can

    bool operator==(const EditData&) const = default;
};

/** An edit of that format with one video and two audio tracks. */
EditData emptyEdit(const std::string& name, const FormatData& format);

/** The media's length in frames of the edit; 0 for a still, which is as long as anybody wants. */
int mediaLength(const MediaInfo& media, const FormatData& format);

/**
 * Why the data cannot be an edit (ids used twice, overlapping segments, a transition that touches nothing, numbers out
 * of range); empty when it can. For data from a file: EditModel takes valid data only.
 */
std::string findFault(const EditData& edit);

} // namespace workbench
