#include "workbench/store/json/EditJson.h"

#include "workbench/store/files/MediaPaths.h"
#include "workbench/store/files/PathText.h"
#include "workbench/store/json/JsonFields.h"

#include <cmath>
#include <limits>

namespace workbench
{

namespace
{
constexpr int kLargestSide = 1'000'000; // what is too large to be shown is refused later, with the reason
constexpr int kLargestRate = 1'000'000;

Json toJson(const FormatData& format)
{
    return {{"width", format.width},
            {"height", format.height},
            {"fpsNumerator", format.fpsNumerator},
            {"fpsDenominator", format.fpsDenominator},
            {"sampleAspectNumerator", format.sampleAspectNumerator},
            {"sampleAspectDenominator", format.sampleAspectDenominator},
            {"colourspace", format.colourspace}};
}

FormatData formatFrom(const Json& json, Warnings& warnings)
{
    const FormatData usual;
    const JsonFields fields(json, "The format", warnings);
    FormatData format;
    format.width = fields.integer("width", usual.width, 1, kLargestSide);
    format.height = fields.integer("height", usual.height, 1, kLargestSide);
    format.fpsNumerator = fields.integer("fpsNumerator", usual.fpsNumerator, 1, kLargestRate);
    format.fpsDenominator = fields.integer("fpsDenominator", usual.fpsDenominator, 1, kLargestRate);
    format.sampleAspectNumerator = fields.integer("sampleAspectNumerator", 1, 1, kLargestRate);
    format.sampleAspectDenominator = fields.integer("sampleAspectDenominator", 1, 1, kLargestRate);
    format.colourspace = fields.integer("colourspace", usual.colourspace, 0, 10'000);
    return format;
}

Json toJson(const MediaData& media, const MediaPaths& paths)
{
    const MediaInfo& info = media.info;
    Json json{{"id", media.id},
              {"path", textOfPath(paths.saved(info.path))},
              {"frames", info.frames},
              {"fpsNumerator", info.fpsNumerator},
              {"fpsDenominator", info.fpsDenominator},
              {"width", info.width},
              {"height", info.height},
              {"hasVideo", info.hasVideo},
              {"hasAudio", info.hasAudio},
              {"audioRate", info.audioRate},
              {"audioChannels", info.audioChannels}};
    if (paths.isRelative(info.path))
        json["relative"] = true;
    return json;
}

MediaData mediaFrom(const Json& json, const MediaPaths& paths, Warnings& warnings)
{
    const int most = std::numeric_limits<int>::max();
    const JsonFields fields(json, "A media file", warnings);
    MediaData media;
    media.id = fields.integer("id", kNoObject, kNoObject, kHighestId);
    const std::string path = pathOfText(fields.text("path"));
    media.info.path = fields.flag("relative", false) ? paths.resolved(path) : path;
    media.info.frames = fields.integer("frames", 0, 0, most);
    media.info.fpsNumerator = fields.integer("fpsNumerator", 25, 1, most);
    media.info.fpsDenominator = fields.integer("fpsDenominator", 1, 1, most);
    media.info.width = fields.integer("width", 0, 0, most);
    media.info.height = fields.integer("height", 0, 0, most);
    media.info.hasVideo = fields.flag("hasVideo", false);
    media.info.hasAudio = fields.flag("hasAudio", false);
    media.info.audioRate = fields.integer("audioRate", 0, 0, most);
    media.info.audioChannels = fields.integer("audioChannels", 0, 0, most);
    return media;
}

std::string narrow(const oribund::WString& text)
{
    return std::string(oribund::toUTF8(text).view());
}

Json toJson(const oribund::Cue& cue)
{
    return {{"id", std::string(cue.id.asString().view())},
            {"time", cue.time},
            {"name", narrow(cue.name)},
            {"description", narrow(cue.description)},
            {"colour", {cue.colour.r, cue.colour.g, cue.colour.b, cue.colour.a}},
            {"flags", cue.flags}};
}

oribund::Cue cueFrom(const Json& json, Warnings& warnings)
{
    const JsonFields fields(json, "A cue", warnings);
    oribund::Cue cue;
    cue.id = oribund::IdStamp::fromString(fields.text("id")).value_or(oribund::IdStamp());
    cue.time = fields.number("time", 0.0, 0.0, kLatestCue);
    cue.name = oribund::toWide(fields.text("name"));
    cue.description = oribund::toWide(fields.text("description"));
    const Json& colour = fields.list("colour");
    double* const parts[] = {&cue.colour.r, &cue.colour.g, &cue.colour.b, &cue.colour.a};
    for (std::size_t i = 0; i < 4 && colour.size() == 4; ++i)
        if (colour[i].is_number() && std::isfinite(colour[i].get<double>()))
            *parts[i] = colour[i].get<double>();
    cue.flags = static_cast<unsigned>(fields.number("flags", oribund::Cue::kVisible, 0, 4294967295.0));
    return cue;
}

Json toJson(const TransitionData& transition)
{
    return {{"id", transition.id},
            {"left", transition.left},
            {"right", transition.right},
            {"length", transition.length},
            {"wipe", transition.wipe},
            {"reversed", transition.reversed},
            {"softness", transition.softness}};
}

TransitionData transitionFrom(const Json& json, Warnings& warnings)
{
    const JsonFields fields(json, "A transition", warnings);
    TransitionData transition;
    transition.id = fields.integer("id", kNoObject, kNoObject, kHighestId);
    transition.left = fields.integer("left", kNoObject, kNoObject, kHighestId);
    transition.right = fields.integer("right", kNoObject, kNoObject, kHighestId);
    transition.length = fields.integer("length", 0, 0, kMostFrames);
    transition.wipe = fields.text("wipe");
    transition.reversed = fields.flag("reversed", false);
    transition.softness = fields.number("softness", 0.0, 0.0, 1.0);
    return transition;
}
} // namespace

Json editJson(const EditData& edit, const MediaPaths& paths)
{
    Json json{{"name", edit.name}, {"format", toJson(edit.format)}};
    Json& media = json["media"] = Json::array();
    for (const MediaData& one : edit.media)
        media.push_back(toJson(one, paths));
    Json& cues = json["cues"] = Json::array();
    for (const oribund::Cue& cue : edit.cues)
        cues.push_back(toJson(cue));
    if (!edit.original.empty())
        json["original"] = edit.original;
    return json;
}

EditData editFrom(const Json& json, const MediaPaths& paths, Warnings& warnings)
{
    EditData edit;
    const JsonFields fields(json, "The edit", warnings);
    edit.name = fields.text("name");
    edit.original = fields.text("original");
    edit.format = formatFrom(json.contains("format") ? json["format"] : Json(), warnings);
    for (const Json& media : fields.list("media"))
        edit.media.push_back(mediaFrom(media, paths, warnings));
    for (const Json& cue : fields.list("cues"))
        edit.cues.push_back(cueFrom(cue, warnings));
    return edit;
}

Json trackJson(const TrackData& track)
{
    Json json{{"id", track.id},
              {"kind", track.kind == TrackKind::Video ? "video" : "audio"},
              {"name", track.name},
              {"enabled", track.enabled}};
    Json& transitions = json["transitions"] = Json::array();
    for (const TransitionData& transition : track.transitions)
        transitions.push_back(toJson(transition));
    return json;
}

TrackData trackFrom(const Json& json, Warnings& warnings)
{
    const JsonFields fields(json, "A track", warnings);
    TrackData track;
    track.id = fields.integer("id", kNoObject, kNoObject, kHighestId);
    track.kind = fields.text("kind") == "audio" ? TrackKind::Audio : TrackKind::Video;
    track.name = fields.text("name");
    track.enabled = fields.flag("enabled", true);
    for (const Json& transition : fields.list("transitions"))
        track.transitions.push_back(transitionFrom(transition, warnings));
    return track;
}

Json segmentJson(const SegmentData& segment, ObjectId track)
{
    return {{"id", segment.id},     {"track", track},         {"media", segment.media}, {"link", segment.link},
            {"name", segment.name}, {"start", segment.start}, {"in", segment.in},       {"length", segment.length}};
}

PlacedSegment segmentFrom(const Json& json, Warnings& warnings)
{
    const JsonFields fields(json, "A segment", warnings);
    PlacedSegment placed;
    placed.segment.id = fields.integer("id", kNoObject, kNoObject, kHighestId);
    placed.track = fields.integer("track", kNoObject, kNoObject, kHighestId);
    placed.segment.media = fields.integer("media", kNoObject, kNoObject, kHighestId);
    placed.segment.link = fields.integer("link", kNoObject, kNoObject, kHighestId);
    placed.segment.name = fields.text("name");
    placed.segment.start = fields.integer("start", 0, 0, kMostFrames);
    placed.segment.in = fields.integer("in", 0, 0, kMostFrames);
    placed.segment.length = fields.integer("length", 1, 1, kMostFrames);
    return placed;
}

} // namespace workbench
