#include "workbench/store/mlt/MltImport.h"

#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/Ids.h"
#include "workbench/model/projection/ServiceText.h"
#include "workbench/store/files/ProjectFormat.h"
#include "workbench/store/json/EditJson.h"
#include "workbench/store/json/EffectJson.h"
#include "workbench/store/json/JsonFields.h"
#include "workbench/store/mlt/MltClip.h"
#include "workbench/store/mlt/MltServices.h"
#include "workbench/store/mlt/MltTrack.h"
#include "workbench/store/mlt/RawParams.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr int kDeepestTracks = 8;
constexpr std::size_t kMostTracks = 200;

// What holds what can be named again and again: a small file can describe any number of visits.
constexpr int kMostVisits = 10'000;
constexpr std::size_t kMostEntries = 200'000;

constexpr unsigned kHideVideo = 1;
constexpr unsigned kHideAudio = 2;

unsigned hiddenOf(pugi::xml_node track)
{
    const std::string hide = track.attribute("hide").value();
    return (hide == "both" || hide == "video" ? kHideVideo : 0u) |
           (hide == "both" || hide == "audio" ? kHideAudio : 0u);
}

std::string counted(int number, const char* one, const char* several)
{
    return std::to_string(number) + ' ' + (number == 1 ? one : several);
}

int attributeOr(pugi::xml_node node, const char* name, int fallback)
{
    const pugi::xml_attribute attribute = node.attribute(name);
    return attribute ? attribute.as_int(fallback) : fallback;
}

FormatData formatOf(pugi::xml_node profile)
{
    const FormatData usual;
    const auto positive = [profile](const char* name, int fallback, int most) {
        const int value = attributeOr(profile, name, fallback);
        return value > 0 && value <= most ? value : fallback;
    };
    FormatData format;
    format.width = positive("width", usual.width, 1'000'000);
    format.height = positive("height", usual.height, 1'000'000);
    format.fpsNumerator = positive("frame_rate_num", usual.fpsNumerator, 1'000'000);
    format.fpsDenominator = positive("frame_rate_den", usual.fpsDenominator, 1'000'000);
    format.sampleAspectNumerator = positive("sample_aspect_num", 1, 1'000'000);
    format.sampleAspectDenominator = positive("sample_aspect_den", 1, 1'000'000);
    format.colourspace = positive("colorspace", usual.colourspace, 10'000);
    return format;
}

class Importer
{
public:
    Importer(pugi::xml_node mlt, const fs::path& folder, const EffectCatalogue& catalogue, Warnings& warnings,
             const std::stop_token& stop)
        : mlt_(mlt)
        , services_(mlt)
        , catalogue_(catalogue)
        , warnings_(warnings)
        , stop_(stop)
    {
        const std::string root = validText(mlt.attribute("root").value());
        root_ = root.starts_with('/') ? fs::path(root) : folder;
        edit_.format = formatOf(mlt.child("profile"));
        edit_.name = validText(mlt.attribute("title").value());
    }

    EditData import()
    {
        const pugi::xml_node main = services_.findMain();
        if (main)
            addAny(main, 0, 0);
        addListedMedia();
        for (const pugi::xml_node list : main.children("properties"))
            if (std::string_view(list.attribute("name").value()).ends_with(":markers"))
                addCues(list);
        tellWhatIsLeft();
        nameTracks();
        // Pictures are listed from the top down; sounds in the order of the file.
        std::reverse(video_.begin(), video_.end());
        edit_.tracks = std::move(video_);
        std::move(audio_.begin(), audio_.end(), std::back_inserter(edit_.tracks));
        return std::move(edit_);
    }

private:
    void tellWhatIsLeft()
    {
        std::string list;
        const auto count = [&list](int number, const char* one, const char* several) {
            if (number > 0)
                list += (list.empty() ? "" : ", ") + counted(number, one, several);
        };
        count(left_.trackEffects, "effect on a whole track", "effects on whole tracks");
        count(left_.transitions, "transition between tracks", "transitions between tracks");
        count(left_.nested, "edit within the edit", "edits within the edit");
        count(left_.speeds, "change of speed", "changes of speed");
        if (!list.empty())
            warnings_.add("Left out, for this program has nothing like them: " + list +
                          ". The project keeps them, unused.");
        if (left_.mixers > 0)
            warnings_.add(counted(left_.mixers, "transition of a kind of its own is a dissolve here.",
                                  "transitions of a kind of their own are dissolves here."));
    }

    void addAny(pugi::xml_node service, unsigned hidden, int depth)
    {
        if (++visits_ > kMostVisits || stop_.stop_requested())
            ++left_.nested;
        else if (isKind(service, {"tractor"}))
            addTractor(service, hidden, depth);
        else if (service && !isBackground(service))
            addTrack(service, hidden);
    }

    void addTractor(pugi::xml_node tractor, unsigned hidden, int depth)
    {
        if (depth > kDeepestTracks || video_.size() + audio_.size() > kMostTracks) {
            ++left_.nested;
            return;
        }
        countLeft(tractor);
        for (const pugi::xml_node holder : {tractor, tractor.child("multitrack")})
            for (const pugi::xml_node track : holder.children("track"))
                addAny(services_.serviceOf(track), hidden | hiddenOf(track), depth + 1);
    }

    /** It only lays tracks over each other, or mixes their sound, which is what an edit does anyway. */
    static bool isPlainOverlay(pugi::xml_node transition)
    {
        const std::string service = propertyOf(transition, "mlt_service");
        return propertyOf(transition, "always_active") == "1" ||
               (!transition.attribute("out") && (service == "frei0r.cairoblend" || service == "qtblend"));
    }

    void countLeft(pugi::xml_node holder)
    {
        for (const pugi::xml_node transition : holder.children("transition"))
            if (!isPlainOverlay(transition) && propertyOf(transition, "disable") != "1")
                ++left_.transitions;
        for (const pugi::xml_node filter : holder.children("filter"))
            if (!propertyOf(filter, "mlt_service").empty())
                ++left_.trackEffects;
    }

    /** A track of nothing but black, which lies below the others to have a picture where they have none. */
    bool isBackground(pugi::xml_node service) const
    {
        if (!video_.empty() || !audio_.empty())
            return false;
        if (isKind(service, {"playlist"})) {
            const pugi::xml_node only = service.child("entry");
            service = only.next_sibling("entry") ? pugi::xml_node() : services_.serviceOf(only);
        }
        if (!isClip(service))
            return false;
        const std::string kind = propertyOf(service, "mlt_service");
        const std::string colour = propertyOf(service, "resource");
        return (kind == "color" || kind == "colour") &&
               (colour == "black" || colour == "0" || colour == "#000000" || colour == "#ff000000");
    }

    /** A playlist, or a single clip. */
    void addTrack(pugi::xml_node service, unsigned hidden)
    {
        if (video_.size() + audio_.size() > kMostTracks) {
            ++left_.nested;
            return;
        }
        TrackData pictures{newId(), TrackKind::Video, {}, true, {}, {}};
        TrackData sounds{newId(), TrackKind::Audio, {}, true, {}, {}};
        for (const TrackPiece& piece : piecesOf(service))
            if (!stop_.stop_requested())
                addSegments(piece, hidden, pictures, sounds);
        if (!pictures.segments.empty() || (sounds.segments.empty() && (hidden & kHideVideo) == 0))
            video_.push_back(std::move(pictures));
        if (!sounds.segments.empty())
            audio_.push_back(std::move(sounds));
    }

    std::vector<TrackPiece> piecesOf(pugi::xml_node service)
    {
        if (!isClip(service))
            countLeft(service);
        TrackPieces read = readTrack(service, services_, edit_.format, kMostEntries - entries_);
        if (read.entries > kMostEntries - entries_)
            ++left_.nested;
        entries_ = std::min(entries_ + read.entries, kMostEntries);
        left_.nested += read.nested;
        left_.mixers += read.mixers;
        return std::move(read.pieces);
    }

    /** The picture and the sound of a piece. */
    void addSegments(const TrackPiece& piece, unsigned hidden, TrackData& pictures, TrackData& sounds)
    {
        const MediaInfo media = mediaOf(piece.clip, root_, edit_.format);
        SegmentData segment;
        const double speed = speedOf(piece.clip);
        segment.in = std::max(static_cast<int>(piece.in * speed), piece.into.before());
        segment.length = piece.length;
        segment.start = piece.start;
        segment.media = mediaId(media);
        segment.name = fs::path(media.path).filename().string();
        const bool seen = media.hasVideo && (hidden & kHideVideo) == 0;
        const bool heard = media.hasAudio && (hidden & kHideAudio) == 0;
        segment.link = seen && heard ? newId() : kNoObject;
        // Each effect goes to the half that it is about. An unknown one may as well be about the picture.
        if (seen)
            addSegment(segment, piece, pictures, heard ? Effects::OfPicture : Effects::All);
        if (heard)
            addSegment(segment, piece, sounds, seen ? Effects::OfSound : Effects::All);
    }

    enum class Effects { All, OfPicture, OfSound };

    void addSegment(SegmentData segment, const TrackPiece& piece, TrackData& track, Effects wanted)
    {
        segment.id = newId();
        const int origin = firstFrameOf(piece.clip, edit_.format);
        addEffects(piece.clip, origin, wanted, segment);
        if (wanted != Effects::OfSound)
            countSpeeds(piece.clip);
        if (piece.entry != piece.clip)
            addEffects(piece.entry, origin, wanted, segment);
        if (piece.into.length > 0 && !track.segments.empty() && track.segments.back().end() == segment.start) {
            TransitionData into = piece.into;
            into.id = newId();
            into.left = track.segments.back().id;
            into.right = segment.id;
            track.transitions.push_back(into);
        }
        track.segments.push_back(std::move(segment));
    }

    void countSpeeds(pugi::xml_node clip)
    {
        left_.speeds += speedOf(clip) == 1.0 ? 0 : 1;
        for (const pugi::xml_node link : clip.children("link"))
            left_.speeds += propertyOf(link, "mlt_service") == "timeremap" ? 1 : 0;
    }

    void addEffects(pugi::xml_node holder, int origin, Effects wanted, SegmentData& segment)
    {
        for (const pugi::xml_node filter : holder.children("filter")) {
            if (isMaskFilter(filter))
                continue;
            const auto known = catalogue_.find(propertyOf(filter, "mlt_service"));
            const bool isSound = known && known->medium == EffectDescription::Medium::Audio;
            if (wanted != Effects::All && isSound != (wanted == Effects::OfSound))
                continue;
            EffectData effect = importFilter(filter, origin, segment, edit_.format, catalogue_, warnings_);
            visitWithMask(effect, [this](EffectData& part) { part.id = newId(); });
            segment.effects.push_back(std::move(effect));
        }
    }

    /** What the other program lists beside its timeline. */
    void addListedMedia()
    {
        for (const pugi::xml_node list : mlt_.children("playlist"))
            if (MltServices::isKept(list))
                for (const pugi::xml_node entry : list.children("entry"))
                    if (const pugi::xml_node clip = services_.serviceOf(entry); isClip(clip))
                        mediaId(mediaOf(clip, root_, edit_.format));
    }

    void addCues(pugi::xml_node list)
    {
        for (const pugi::xml_node mark : list.children("properties")) {
            oribund::Cue cue;
            cue.id = stampOf(newId());
            cue.time = frameOf(propertyOf(mark, "start"), edit_.format, 0) * edit_.format.frameLength();
            cue.name = oribund::toWide(propertyOf(mark, "text"));
            if (const auto colour = parseServiceColour(propertyOf(mark, "color")))
                cue.colour = {(*colour)[0], (*colour)[1], (*colour)[2], (*colour)[3]};
            edit_.cues.push_back(cue);
        }
        std::stable_sort(edit_.cues.begin(), edit_.cues.end(),
                         [](const oribund::Cue& a, const oribund::Cue& b) { return a.time < b.time; });
    }

    ObjectId mediaId(const MediaInfo& media)
    {
        const auto [place, isNew] = mediaByPath_.emplace(media.path, nextMedia());
        if (isNew) {
            edit_.media.push_back({newId(), media});
        } else {
            MediaInfo& known = edit_.media[place->second].info;
            known.frames = std::max(known.frames, media.frames);
            known.hasAudio = known.hasAudio || media.hasAudio;
            known.hasVideo = known.hasVideo || media.hasVideo;
        }
        return edit_.media[place->second].id;
    }

    std::size_t nextMedia() const { return edit_.media.size(); }

    void nameTracks()
    {
        for (std::size_t i = 0; i < video_.size(); ++i)
            video_[i].name = std::string("V").append(std::to_string(i + 1));
        for (std::size_t i = 0; i < audio_.size(); ++i)
            audio_[i].name = std::string("A").append(std::to_string(i + 1));
    }

    ObjectId newId() { return ++lastId_; }

    struct LeftOut {
        int trackEffects = 0;
        int transitions = 0;
        int nested = 0;
        int speeds = 0;
        int mixers = 0;
    };

    pugi::xml_node mlt_;
    const MltServices services_;
    fs::path root_;
    const EffectCatalogue& catalogue_;
    Warnings& warnings_;
    const std::stop_token stop_;
    EditData edit_;
    std::vector<TrackData> video_;
    std::vector<TrackData> audio_;
    std::unordered_map<std::string, std::size_t> mediaByPath_;
    LeftOut left_;
    int visits_ = 0;
    std::size_t entries_ = 0;
    ObjectId lastId_ = kNoObject;
};
} // namespace

EditData importMlt(pugi::xml_node mlt, const fs::path& folder, const EffectCatalogue& catalogue, Warnings& warnings,
                   const std::stop_token& stop)
{
    return Importer(mlt, folder, catalogue, warnings, stop).import();
}

EffectData importFilter(pugi::xml_node filter, int origin, const SegmentData& segment, const FormatData& format,
                        const EffectCatalogue& catalogue, Warnings& warnings)
{
    if (const std::string own = propertyOf(filter, format::kEffectProperty); !own.empty()) {
        const ParsedJson parsed = parseJson(own);
        if (parsed.error.empty() && parsed.value.is_object())
            return effectFrom(parsed.value, warnings);
        warnings.add("What was saved of the effect \"" + propertyOf(filter, "mlt_service") +
                     "\" is damaged; it was taken from what is played.");
    }
    EffectData effect;
    effect.service = propertyOf(filter, "mlt_service");
    for (const pugi::xml_node property : filter.children("property")) {
        const std::string name = validText(property.attribute("name").value());
        if (name == "disable")
            effect.enabled = std::strcmp(property.child_value(), "1") != 0;
        else if (name != "mlt_service" && name != format::kEffectProperty && !name.empty())
            effect.rest.emplace_back(name, validText(property.child_value()));
    }
    const int in = origin + std::max(frameOf(filter.attribute("in").value(), format, 0), 0);
    const int out = origin + frameOf(filter.attribute("out").value(), format, 0);
    if (out > origin && (in > segment.in || out < segment.in + segment.length - 1)) {
        effect.first = in;
        effect.last = std::max(in, out);
    }
    const auto known = catalogue.find(effect.service);
    if (!known)
        return effect;
    // Both count from the beginning of the media: keyframes from the filter's in point, the segment from its own.
    effect.params = takeParams(*known, effect.rest, {segment.length, in - segment.in, format});
    for (const auto& [name, value] : effect.rest)
        if (known->find(name))
            warnings.add("The setting \"" + name + "\" of the effect \"" + known->title +
                         "\" cannot be shown here; its default is used.");
    return effect;
}

} // namespace workbench
