#include "workbench/model/EditData.h"

#include "workbench/model/Ids.h"
#include "workbench/model/MaskDescription.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace workbench
{

namespace
{
// A picture of this size takes a quarter of a gigabyte, and several are held at a time.
constexpr int kLargestSide = 16'384;
constexpr int kMostPixels = 8192 * 8192;

/** Finds the first fault of an edit; each function returns a text, empty where all is well. */
class FaultFinder
{
public:
    explicit FaultFinder(const EditData& edit)
        : edit_(edit)
    {
    }

    std::string find()
    {
        const FormatData& f = edit_.format;
        if (f.width <= 0 || f.height <= 0 || f.fpsNumerator <= 0 || f.fpsDenominator <= 0 ||
            f.sampleAspectNumerator <= 0 || f.sampleAspectDenominator <= 0)
            return "the format has no size or rate";
        if (f.width > kLargestSide || f.height > kLargestSide || f.width * f.height > kMostPixels)
            return "its pictures of " + std::to_string(f.width) + " x " + std::to_string(f.height) +
                   " are larger than this program can make";
        for (const MediaData& media : edit_.media) {
            if (!claim(media.id))
                return idFault("media", media.id);
            if (media.info.frames < 0 || media.info.fpsNumerator <= 0 || media.info.fpsDenominator <= 0)
                return "the media \"" + media.info.path + "\" has no rate or length";
        }
        for (const TrackData& track : edit_.tracks)
            if (std::string fault = inTrack(track); !fault.empty())
                return fault;
        return inCues();
    }

private:
    bool claim(ObjectId id) { return id > kNoObject && id <= kHighestId && ids_.insert(id).second; }

    static std::string idFault(const char* what, ObjectId id)
    {
        return "a " + std::string(what) + " has the id " + std::to_string(id) + ", which is taken or out of range";
    }

    std::string inTrack(const TrackData& track)
    {
        if (!claim(track.id))
            return idFault("track", track.id);
        int end = 0;
        for (const SegmentData& segment : track.segments) {
            if (!claim(segment.id))
                return idFault("segment", segment.id);
            if (std::max({segment.start, segment.in, segment.length}) > kMostFrames)
                return "segment " + std::to_string(segment.id) + " lies beyond what an edit can hold";
            if (segment.start < end || segment.length <= 0 || segment.in < 0)
                return "segment " + std::to_string(segment.id) + " overlaps another or has no length";
            end = segment.end();
            if (std::string fault = inSegment(segment); !fault.empty())
                return fault;
        }
        for (const TransitionData& transition : track.transitions)
            if (std::string fault = inTransition(track, transition); !fault.empty())
                return fault;
        return {};
    }

    std::string inSegment(const SegmentData& segment)
    {
        if (std::none_of(edit_.media.begin(), edit_.media.end(),
                         [&segment](const MediaData& media) { return media.id == segment.media; }))
            return "segment " + std::to_string(segment.id) + " shows media that the edit does not have";
        for (const EffectData& effect : segment.effects) {
            if (effect.mask.size() > 1 || (!effect.mask.empty() && !isMask(effect.mask.front())))
                return "effect " + std::to_string(effect.id) + " has a mask that is none";
            std::string fault;
            visitWithMask(effect, [&](const EffectData& part) { fault = fault.empty() ? inEffect(part) : fault; });
            if (!fault.empty())
                return fault;
        }
        return {};
    }

    std::string inEffect(const EffectData& effect)
    {
        if (!claim(effect.id))
            return idFault("effect", effect.id);
        for (const ParamData& param : effect.params)
            if (!inOrder(param))
                return "the keyframes of \"" + param.property + "\" are out of order or not numbers";
        return {};
    }

    static bool inOrder(const ParamData& param)
    {
        for (const ChannelData& channel : param.channels) {
            if (channel.size() != param.channels.front().size())
                return false;
            for (std::size_t i = 0; i < channel.size(); ++i) {
                if (!std::isfinite(channel[i].time) || !std::isfinite(channel[i].value))
                    return false;
                if (i > 0 && !(channel[i - 1].time < channel[i].time))
                    return false;
                if (channel[i].time != param.channels.front()[i].time)
                    return false;
            }
        }
        return true;
    }

    std::string inTransition(const TrackData& track, const TransitionData& transition)
    {
        if (!claim(transition.id))
            return idFault("transition", transition.id);
        const auto left = std::find_if(track.segments.begin(), track.segments.end(),
                                       [&](const SegmentData& s) { return s.id == transition.left; });
        if (left == track.segments.end() || std::next(left) == track.segments.end() ||
            std::next(left)->id != transition.right || std::next(left)->start != left->end())
            return "transition " + std::to_string(transition.id) + " joins segments that do not touch";
        if (transition.length < 2 || transition.before() > left->length || transition.after() > std::next(left)->length)
            return "transition " + std::to_string(transition.id) + " is longer than its segments";
        return {};
    }

    std::string inCues()
    {
        for (const oribund::Cue& cue : edit_.cues) {
            if (!claim(objectOf(cue.id)))
                return idFault("cue", objectOf(cue.id));
            if (!(cue.time >= 0.0 && cue.time <= kLatestCue))
                return "a cue has no time";
        }
        return {};
    }

    const EditData& edit_;
    std::set<ObjectId> ids_;
};
} // namespace

EditData emptyEdit(const std::string& name, const FormatData& format)
{
    EditData edit;
    edit.name = name;
    edit.format = format;
    edit.tracks.push_back({1, TrackKind::Video, "V1", true, {}, {}});
    edit.tracks.push_back({2, TrackKind::Audio, "A1", true, {}, {}});
    edit.tracks.push_back({3, TrackKind::Audio, "A2", true, {}, {}});
    return edit;
}

int mediaLength(const MediaInfo& media, const FormatData& format)
{
    const double seconds = static_cast<double>(media.frames) * media.fpsDenominator / media.fpsNumerator;
    // A little is added before rounding down, so that a length that is whole in both rates does not lose a frame.
    return static_cast<int>(std::min(std::floor(seconds / format.frameLength() + 1e-6), 2e9));
}

std::string findFault(const EditData& edit)
{
    return FaultFinder(edit).find();
}

} // namespace workbench
