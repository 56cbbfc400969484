#include "workbench/store/mlt/MltImport.h"

#include "workbench/model/EffectCatalogue.h"
#include "workbench/store/files/ProjectFormat.h"
#include "workbench/store/json/EditJson.h"
#include "workbench/store/json/EffectJson.h"
#include "workbench/store/json/JsonFields.h"
#include "workbench/store/json/RawParams.h"
#include "workbench/store/mlt/MltClip.h"

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
constexpr int kMostSegments = 200'000;

constexpr unsigned kHideVideo = 1;
constexpr unsigned kHideAudio = 2;

unsigned hiddenOf(pugi::xml_node track)
{
    const std::string hide = track.attribute("hide").value();
    return (hide == "both" || hide == "video" ? kHideVideo : 0u) |
           (hide == "both" || hide == "audio" ? kHideAudio : 0u);
}

bool isKind(pugi::xml_node node, std::initializer_list<const char*> kinds)
{
    return std::any_of(kinds.begin(), kinds.end(),
                       [node](const char* kind) { return std::strcmp(node.name(), kind) == 0; });
}

bool isClip(pugi::xml_node node)
{
    return isKind(node, {"producer", "chain"});
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
    Importer(pugi::xml_node mlt, const fs::path& folder, const EffectCatalogue& catalogue, Warnings& warnings)
        : mlt_(mlt)
        , catalogue_(catalogue)
        , warnings_(warnings)
    {
        const std::string root = validText(mlt.attribute("root").value());
        root_ = root.starts_with('/') ? fs::path(root) : folder;
        edit_.format = formatOf(mlt.child("profile"));
        edit_.name = validText(mlt.attribute("title").value());
    }

    EditData import()
    {
        indexServices();
        if (const pugi::xml_node main = findMain())
            addAny(main, 0, 0);
        if (left_.trackEffects + left_.transitions + left_.nested > 0)
            warnings_.add("Left out, for this program has nothing like them: " + std::to_string(left_.trackEffects) +
                          " effects on whole tracks, " + std::to_string(left_.transitions) +
                          " transitions between tracks, " + std::to_string(left_.nested) + " edits within the edit.");
        nameTracks();
        // Pictures are listed from the top down; sounds in the order of the file.
        std::reverse(video_.begin(), video_.end());
        edit_.tracks = std::move(video_);
        std::move(audio_.begin(), audio_.end(), std::back_inserter(edit_.tracks));
        return std::move(edit_);
    }

private:
    // Any service may be described where it is first used, at any depth.
    void indexServices()
    {
        std::vector<pugi::xml_node> open{mlt_};
        while (!open.empty()) {
            const pugi::xml_node node = open.back();
            open.pop_back();
            if (isKind(node, {"producer", "chain", "playlist", "tractor"}))
                if (const pugi::xml_attribute id = node.attribute("id"))
                    services_.emplace(id.value(), node);
            for (const pugi::xml_node child : node.children())
                open.push_back(child);
        }
    }

    pugi::xml_node findMain() const
    {
        pugi::xml_node main;
        if (const auto named = services_.find(mlt_.attribute("producer").value()); named != services_.end())
            main = named->second;
        if (main && !isKept(main))
            return main;
        pugi::xml_node last;
        for (const pugi::xml_node child : mlt_.children())
            if (isKind(child, {"producer", "chain", "playlist", "tractor"}) && !isKept(child) &&
                (!main || isKind(child, {"tractor"})))
                last = child;
        return last ? last : main;
    }

    /** Not played, but kept for its program: the list of the media that it knows. */
    static bool isKept(pugi::xml_node service) { return propertyOf(service, "xml_retain") == "1"; }

    /** What a `track` or `entry` shows: named by id, or described inside it. */
    pugi::xml_node serviceOf(pugi::xml_node user) const
    {
        if (const auto named = services_.find(user.attribute("producer").value()); named != services_.end())
            return named->second;
        for (const pugi::xml_node child : user.children())
            if (isKind(child, {"producer", "chain", "playlist", "tractor"}))
                return child;
        return {};
    }

    void addAny(pugi::xml_node service, unsigned hidden, int depth)
    {
        if (++visits_ > kMostVisits)
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
                addAny(serviceOf(track), hidden | hiddenOf(track), depth + 1);
    }

    void countLeft(pugi::xml_node holder)
    {
        // What only lays tracks over each other, or mixes their sound, is what an edit does anyway.
        for (const pugi::xml_node transition : holder.children("transition"))
            if (propertyOf(transition, "always_active") != "1")
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
            service = only.next_sibling("entry") ? pugi::xml_node() : serviceOf(only);
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
        int at = 0;
        if (isClip(service)) {
            addSegments(service, service, hidden, at, pictures, sounds);
        } else {
            countLeft(service);
            for (const pugi::xml_node item : service.children())
                if (isKind(item, {"blank"}))
                    at += std::max(frameOf(item.attribute("length").value(), edit_.format, 0), 0);
                else if (isKind(item, {"entry"}))
                    addSegments(item, serviceOf(item), hidden, at, pictures, sounds);
        }
        if (!pictures.segments.empty() || (hidden & kHideVideo) == 0)
            video_.push_back(std::move(pictures));
        if (!sounds.segments.empty())
            audio_.push_back(std::move(sounds));
    }

    /** The picture and the sound of an entry, at frame `at`, which is moved on to its end. */
    void addSegments(pugi::xml_node entry, pugi::xml_node producer, unsigned hidden, int& at, TrackData& pictures,
                     TrackData& sounds)
    {
        const MediaInfo media = isClip(producer) ? mediaOf(producer, root_, edit_.format) : MediaInfo();
        const int lastOfMedia = frameOf(producer.attribute("out").value(), edit_.format,
                                        media.frames > 0 ? media.frames - 1 : kMostFrames / 1000);
        SegmentData segment;
        segment.in = std::max(frameOf(entry.attribute("in").value(), edit_.format, 0), 0);
        segment.length = frameOf(entry.attribute("out").value(), edit_.format, lastOfMedia) - segment.in + 1;
        segment.start = at;
        if (segment.length <= 0 || at > kMostFrames - segment.length)
            return;
        at = segment.end();
        if (!isClip(producer) || ++segments_ > kMostSegments) {
            ++left_.nested;
            return;
        }
        segment.media = mediaId(media);
        segment.name = fs::path(media.path).filename().string();
        const bool seen = media.hasVideo && (hidden & kHideVideo) == 0;
        const bool heard = media.hasAudio && (hidden & kHideAudio) == 0;
        segment.link = seen && heard ? newId() : kNoObject;
        // Each effect goes to the half that it is about. An unknown one may as well be about the picture.
        if (seen)
            addSegment(segment, entry, producer, pictures, heard ? Effects::OfPicture : Effects::All);
        if (heard)
            addSegment(segment, entry, producer, sounds, seen ? Effects::OfSound : Effects::All);
    }

    enum class Effects { All, OfPicture, OfSound };

    void addSegment(SegmentData segment, pugi::xml_node entry, pugi::xml_node producer, TrackData& track,
                    Effects wanted)
    {
        segment.id = newId();
        addEffects(producer, wanted, segment);
        if (entry != producer)
            addEffects(entry, wanted, segment);
        track.segments.push_back(std::move(segment));
    }

    void addEffects(pugi::xml_node holder, Effects wanted, SegmentData& segment)
    {
        for (const pugi::xml_node filter : holder.children("filter")) {
            const auto known = catalogue_.find(propertyOf(filter, "mlt_service"));
            const bool isSound = known && known->medium == EffectDescription::Medium::Audio;
            if (wanted != Effects::All && isSound != (wanted == Effects::OfSound))
                continue;
            EffectData effect = importFilter(filter, segment, edit_.format, catalogue_, warnings_);
            effect.id = newId();
            segment.effects.push_back(std::move(effect));
        }
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
    };

    pugi::xml_node mlt_;
    fs::path root_;
    const EffectCatalogue& catalogue_;
    Warnings& warnings_;
    EditData edit_;
    std::vector<TrackData> video_;
    std::vector<TrackData> audio_;
    std::unordered_map<std::string, pugi::xml_node> services_;
    std::unordered_map<std::string, std::size_t> mediaByPath_;
    LeftOut left_;
    int visits_ = 0;
    int segments_ = 0;
    ObjectId lastId_ = kNoObject;
};
} // namespace

EditData importMlt(pugi::xml_node mlt, const fs::path& folder, const EffectCatalogue& catalogue, Warnings& warnings)
{
    return Importer(mlt, folder, catalogue, warnings).import();
}

EffectData importFilter(pugi::xml_node filter, const SegmentData& segment, const FormatData& format,
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
    const auto known = catalogue.find(effect.service);
    if (!known)
        return effect;
    // Both count from the beginning of the media: keyframes from the filter's in point, the segment from its own.
    const int in = std::max(frameOf(filter.attribute("in").value(), format, 0), 0);
    const int out = frameOf(filter.attribute("out").value(), format, 0);
    effect.params = takeParams(*known, effect.rest, {segment.length, in - segment.in});
    if (out > 0 && (in > segment.in || out < segment.in + segment.length - 1))
        warnings.add("The effect \"" + known->title + "\" is at work on a part of \"" + segment.name +
                     "\" only; here it works on all of it.");
    for (const auto& [name, value] : effect.rest)
        if (known->find(name))
            warnings.add("The setting \"" + name + "\" of the effect \"" + known->title +
                         "\" cannot be shown here; its default is used.");
    return effect;
}

} // namespace workbench
