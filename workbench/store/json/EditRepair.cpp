#include "workbench/store/json/EditRepair.h"

#include "workbench/model/Ids.h"
#include "workbench/store/json/JsonFields.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace workbench
{

namespace
{
class Repair
{
public:
    Repair(EditData& edit, Warnings& warnings)
        : edit_(edit)
        , warnings_(warnings)
    {
    }

    void run()
    {
        claimIds();
        std::unordered_set<ObjectId> media;
        for (const MediaData& one : edit_.media) {
            media.insert(one.id);
            if (one.info.isStill())
                stills_.insert(one.id);
        }
        for (TrackData& track : edit_.tracks) {
            dropWhere(track.segments, "segments show media that the project does not name",
                      [&](const SegmentData& segment) { return !media.contains(segment.media); });
            untangle(track);
            checkTransitions(track);
            for (SegmentData& segment : track.segments)
                checkCurves(segment);
        }
    }

private:
    template <class T, class Predicate>
    void dropWhere(std::vector<T>& items, const char* what, Predicate wrong)
    {
        if (const std::size_t dropped = std::erase_if(items, wrong); dropped > 0)
            warnings_.add(std::to_string(dropped) + " " + what + ", and were left out.");
    }

    // Ids that are good stay, whatever stands before them in the file; then the others get new ones.
    void claimIds()
    {
        forEachId([this](ObjectId& id) {
            if (id > kNoObject && used_.insert(id).second)
                highest_ = std::max(highest_, id);
            else
                id = kNoObject;
        });
        forEachId([this](ObjectId& id) {
            if (id == kNoObject)
                id = ++highest_;
        });
    }

    template <class Visit>
    void forEachId(Visit visit)
    {
        for (MediaData& media : edit_.media)
            visit(media.id);
        for (TrackData& track : edit_.tracks) {
            visit(track.id);
            for (SegmentData& segment : track.segments) {
                visit(segment.id);
                for (EffectData& effect : segment.effects)
                    visitWithMask(effect, [&visit](EffectData& part) { visit(part.id); });
            }
            for (TransitionData& transition : track.transitions)
                visit(transition.id);
        }
        for (oribund::Cue& cue : edit_.cues) {
            ObjectId id = objectOf(cue.id);
            visit(id);
            cue.id = stampOf(id);
        }
    }

    void untangle(TrackData& track)
    {
        std::stable_sort(track.segments.begin(), track.segments.end(),
                         [](const SegmentData& a, const SegmentData& b) { return a.start < b.start; });
        int end = 0;
        dropWhere(track.segments, "segments overlap others", [&end](const SegmentData& segment) {
            const bool wrong = segment.start < end || segment.length <= 0 || segment.in < 0;
            end = wrong ? end : segment.end();
            return wrong;
        });
    }

    void checkTransitions(TrackData& track)
    {
        std::unordered_map<ObjectId, std::size_t> places;
        for (std::size_t i = 0; i < track.segments.size(); ++i)
            places.emplace(track.segments[i].id, i);
        std::vector<int> used(track.segments.size(), 0); // frames of each that transitions take
        std::unordered_set<ObjectId> left;
        dropWhere(track.transitions, "transitions do not fit the segments that they join",
                  [&](const TransitionData& transition) {
                      const auto place = places.find(transition.left);
                      return place == places.end() || left.contains(transition.left) ||
                             !takeFrames(track, place->second, transition, used) ||
                             !left.insert(transition.left).second;
                  });
        std::sort(track.transitions.begin(), track.transitions.end(),
                  [](const TransitionData& a, const TransitionData& b) { return a.id < b.id; });
    }

    /** Whether the transition fits the segment at that place and the next one, with those that were there before. */
    bool takeFrames(const TrackData& track, std::size_t place, const TransitionData& transition, std::vector<int>& used)
    {
        if (place + 1 == track.segments.size() || transition.length < 2)
            return false;
        const SegmentData& left = track.segments[place];
        const SegmentData& right = track.segments[place + 1];
        const bool touching = right.id == transition.right && right.start == left.end();
        const bool hasMedia = stills_.contains(right.media) || right.in >= transition.before();
        if (!touching || !hasMedia || used[place] + transition.before() > left.length ||
            used[place + 1] + transition.after() > right.length)
            return false;
        used[place] += transition.before();
        used[place + 1] += transition.after();
        return true;
    }

    void checkCurves(SegmentData& segment)
    {
        for (EffectData& effect : segment.effects)
            visitWithMask(effect, [this](EffectData& part) {
                for (ParamData& param : part.params)
                    if (!inStep(param)) {
                        warnings_.add("The keyframes of \"" + param.property +
                                      "\" cannot be understood; its value is used.");
                        param.channels.clear();
                        param.keyframed = false;
                    }
            });
    }

    static bool inStep(const ParamData& param)
    {
        for (const ChannelData& channel : param.channels)
            for (std::size_t i = 0; i < channel.size(); ++i) {
                const ChannelData& first = param.channels.front();
                if (channel.size() != first.size() || channel[i].time != first[i].time ||
                    (i > 0 && !(channel[i - 1].time < channel[i].time)))
                    return false;
            }
        return true;
    }

    EditData& edit_;
    Warnings& warnings_;
    std::unordered_set<ObjectId> used_;
    std::unordered_set<ObjectId> stills_;
    ObjectId highest_ = kNoObject;
};
} // namespace

void repairEdit(EditData& edit, Warnings& warnings)
{
    Repair(edit, warnings).run();
}

} // namespace workbench
