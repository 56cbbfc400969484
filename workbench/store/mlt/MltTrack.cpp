#include "workbench/store/mlt/MltTrack.h"

#include "workbench/model/projection/ServiceText.h"
#include "workbench/store/mlt/MltClip.h"

#include <algorithm>
#include <optional>

namespace workbench
{

namespace
{
/** A part of a clip. */
struct Cut {
    pugi::xml_node user; // `entry` or `track`
    pugi::xml_node clip;
    int in = 0;
    int length = 0;
};

/** Two cuts that lie over each other, in a tractor of their own. */
struct Mix {
    Cut left;
    Cut right;
    TransitionData transition;
    bool isKnown = true;
};

class TrackReader
{
public:
    TrackReader(const MltServices& services, const FormatData& format, std::size_t most)
        : services_(services)
        , format_(format)
        , most_(most)
    {
    }

    TrackPieces read(pugi::xml_node track)
    {
        if (isClip(track))
            addCut(cutOf(track, track));
        for (const pugi::xml_node item : track.children()) {
            if (isKind(item, {"blank"})) {
                addBlank(frameOf(item.attribute("length").value(), format_, 0));
            } else if (isKind(item, {"entry"})) {
                if (++result_.entries > most_)
                    break;
                addCut(cutOf(item, services_.serviceOf(item)));
            }
        }
        return std::move(result_);
    }

private:
    /** As long as the service says, where the user does not; it counts from the frame that the service begins with. */
    Cut cutOf(pugi::xml_node user, pugi::xml_node clip) const
    {
        const MediaInfo media = isClip(clip) ? mediaOf(clip, {}, format_) : MediaInfo();
        const int origin = isClip(clip) ? firstFrameOf(clip, format_) : 0;
        const int end =
            frameOf(clip.attribute("out").value(), format_, media.frames > 0 ? media.frames - 1 : kMostFrames / 1000);
        const int in = user == clip ? 0 : std::max(frameOf(user.attribute("in").value(), format_, 0), 0);
        const int last = user == clip ? end - origin : frameOf(user.attribute("out").value(), format_, end - origin);
        return {user, clip, origin + in, last - in + 1};
    }

    std::optional<Mix> mixOf(const Cut& whole) const
    {
        if (!isKind(whole.clip, {"tractor"}) || whole.in != 0 || whole.length < 2)
            return std::nullopt;
        std::vector<Cut> cuts;
        for (const pugi::xml_node track : whole.clip.children("track"))
            if (cuts.size() < 3)
                cuts.push_back(cutOf(track, services_.serviceOf(track)));
        const auto isWhole = [&whole](const Cut& cut) { return isClip(cut.clip) && cut.length == whole.length; };
        if (cuts.size() != 2 || !isWhole(cuts[0]) || !isWhole(cuts[1]))
            return std::nullopt;
        Mix mix{cuts[0], cuts[1], {}, true};
        mix.transition.length = whole.length;
        for (const pugi::xml_node transition : whole.clip.children("transition"))
            readMixer(transition, mix);
        return mix;
    }

    static void readMixer(pugi::xml_node transition, Mix& mix)
    {
        const std::string service = propertyOf(transition, "mlt_service");
        if (service != "luma" && service != "mix")
            mix.isKnown = false;
        if (service != "luma")
            return;
        const std::string map = propertyOf(transition, "resource");
        const bool isFile = map.starts_with('/');
        mix.isKnown = mix.isKnown && (isFile || map.empty());
        if (!isFile)
            return;
        mix.transition.wipe = map;
        mix.transition.reversed = propertyOf(transition, "invert") == "1";
        mix.transition.softness =
            std::clamp(numberFromService(propertyOf(transition, "softness")).value_or(0.0), 0.0, 1.0);
    }

    void addBlank(int length)
    {
        at_ = std::min(at_ + std::max(length, 0), kMostFrames);
        afterMix_ = false;
    }

    void addCut(const Cut& cut)
    {
        if (cut.length <= 0 || at_ > kMostFrames - cut.length)
            return;
        if (const std::optional<Mix> mix = mixOf(cut))
            return addMix(*mix);
        if (isClip(cut.clip)) {
            if (!afterMix_ || !extend(cut, cut.length))
                add(cut, cut.in, cut.length);
        } else {
            ++result_.nested;
        }
        at_ += cut.length;
        afterMix_ = false;
    }

    void addMix(const Mix& mix)
    {
        const int before = mix.transition.before();
        if (!extend(mix.left, before))
            add(mix.left, mix.left.in, before);
        at_ += before;
        add(mix.right, mix.right.in + before, mix.transition.after(), mix.transition);
        at_ += mix.transition.after();
        result_.mixers += mix.isKnown ? 0 : 1;
        afterMix_ = true;
    }

    /** Whether the cut goes on with the piece before, which is then longer. */
    bool extend(const Cut& cut, int length)
    {
        if (result_.pieces.empty())
            return false;
        TrackPiece& last = result_.pieces.back();
        if (last.clip != cut.clip || last.end() != at_ || last.in + last.length != cut.in)
            return false;
        last.length += length;
        if (cut.user.child("filter"))
            last.entry = cut.user;
        return true;
    }

    void add(const Cut& cut, int in, int length, const TransitionData& into = {})
    {
        result_.pieces.push_back({cut.user, cut.clip, at_, in, length, into});
    }

    const MltServices& services_;
    const FormatData& format_;
    const std::size_t most_;
    TrackPieces result_;
    int at_ = 0;
    bool afterMix_ = false;
};
} // namespace

TrackPieces readTrack(pugi::xml_node track, const MltServices& services, const FormatData& format, std::size_t most)
{
    return TrackReader(services, format, most).read(track);
}

} // namespace workbench
