#include "workbench/store/ProjectFile.h"
#include "workbench/store/files/AtomicFile.h"
#include "workbench/store/files/FileIdentity.h"
#include "workbench/store/files/MediaPaths.h"
#include "workbench/store/files/ProjectFormat.h"
#include "workbench/store/json/EditJson.h"
#include "workbench/store/json/EditRepair.h"
#include "workbench/store/json/EffectJson.h"
#include "workbench/store/json/JsonFields.h"
#include "workbench/store/json/RangeCheck.h"
#include "workbench/store/mlt/MltClip.h"
#include "workbench/store/mlt/MltImport.h"
#include "workbench/store/mlt/MltServices.h"

#include "workbench/model/projection/AllowList.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>
#include <set>
#include <unordered_map>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{
constexpr std::size_t kLargestFile = std::size_t{2} << 30;

/** The tractor in which the edit's own data rides; none in a file by another program. */
pugi::xml_node findEditTractor(pugi::xml_node mlt)
{
    for (const pugi::xml_node tractor : mlt.children("tractor"))
        if (tractor.find_child_by_attribute("property", "name", format::kEditProperty) ||
            tractor.find_child_by_attribute("property", "name", format::kVersionProperty))
            return tractor;
    return {};
}

/** Puts an edit together from the parts that ride along with the services of a project. */
class ProjectReader
{
public:
    ProjectReader(pugi::xml_node mlt, const MediaPaths& paths, const EffectCatalogue& catalogue, Warnings& warnings)
        : mlt_(mlt)
        , paths_(paths)
        , catalogue_(catalogue)
        , warnings_(warnings)
    {
    }

    /** Returns why the project cannot be read, or nothing. */
    std::string read(pugi::xml_node tractor, EditData& edit)
    {
        const std::string version = propertyOf(tractor, format::kVersionProperty);
        if (version.size() > 9 || std::atoi(version.c_str()) > format::kVersion)
            return "it was saved by a newer version of this program. Open it with that one";
        const ParsedJson json = parseJson(propertyOf(tractor, format::kEditProperty));
        if (!json.error.empty() || !json.value.is_object())
            return "the description of the edit in it is damaged";
        edit = editFrom(json.value, paths_, warnings_);
        readTracks(tractor, edit);
        readSegments(edit);
        return {};
    }

private:
    /** The value of an element's property; null, with a warning, where it is damaged. */
    Json dataOf(pugi::xml_node element, const char* property)
    {
        const std::string text = propertyOf(element, property);
        if (text.empty())
            return {};
        ParsedJson parsed = parseJson(text);
        if (parsed.error.empty() && parsed.value.is_object())
            return std::move(parsed.value);
        warnings_.add("What was saved of \"" + std::string(element.attribute("id").value()) +
                      "\" is damaged and was left out.");
        return {};
    }

    // Tracks are played from the bottom up, and listed from the top down.
    void readTracks(pugi::xml_node tractor, EditData& edit)
    {
        std::unordered_map<std::string, pugi::xml_node> playlists;
        for (const pugi::xml_node playlist : mlt_.children("playlist"))
            playlists[playlist.attribute("id").value()] = playlist;
        for (const pugi::xml_node track : tractor.children("track"))
            if (const auto found = playlists.find(track.attribute("producer").value()); found != playlists.end())
                if (const Json json = dataOf(found->second, format::kTrackProperty); !json.is_null())
                    edit.tracks.push_back(trackFrom(json, warnings_));
        std::reverse(edit.tracks.begin(), edit.tracks.end());
    }

    void readSegments(EditData& edit)
    {
        std::unordered_map<ObjectId, TrackData*> tracks;
        for (TrackData& track : edit.tracks)
            tracks.emplace(track.id, &track);
        for (const pugi::xml_node producer : mlt_.children("producer")) {
            const Json json = dataOf(producer, format::kSegmentProperty);
            if (json.is_null())
                continue;
            PlacedSegment placed = segmentFrom(json, warnings_);
            const auto track = tracks.find(placed.track);
            if (track == tracks.end()) {
                warnings_.add("The segment \"" + placed.segment.name + "\" is on no track, and was left out.");
                continue;
            }
            for (const pugi::xml_node filter : producer.children("filter")) {
                if (isMaskFilter(filter))
                    continue;
                placed.segment.effects.push_back(
                    importFilter(filter, 0, placed.segment, edit.format, catalogue_, warnings_));
            }
            track->second->segments.push_back(std::move(placed.segment));
        }
    }

    pugi::xml_node mlt_;
    const MediaPaths& paths_;
    const EffectCatalogue& catalogue_;
    Warnings& warnings_;
};

/** Parses a document; says in a person's words why it is none. */
std::string parseXml(pugi::xml_document& document, std::string_view bytes)
{
    if (bytes.find_first_not_of(" \t\r\n") == std::string_view::npos)
        return "it is empty";
    const pugi::xml_parse_result parsed = document.load_buffer(
        bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata_single, pugi::encoding_utf8);
    if (document.first_child().empty() || bytes[bytes.find_first_not_of(" \t\r\n\xef\xbb\xbf")] != '<')
        return "it is no project";
    if (!parsed) {
        const auto at = std::clamp<std::ptrdiff_t>(parsed.offset, 0, static_cast<std::ptrdiff_t>(bytes.size()));
        const auto line = 1 + std::count(bytes.begin(), bytes.begin() + at, '\n');
        return "it is cut off or damaged, at line " + std::to_string(line) +
               ". Open an earlier copy; the file was not changed";
    }
    if (std::strcmp(document.document_element().name(), "mlt") != 0)
        return "it is no project";
    return {};
}

/** What another program's project holds and is not made is named at once, not when it is first to be seen. */
void warnOfRefused(const EditData& edit, const EffectCatalogue& catalogue, Warnings& warnings)
{
    const AllowList allowed(catalogue);
    std::set<std::string> names;
    for (const MediaData& media : edit.media)
        if (!allowed.sourceOf(media.info.path))
            names.insert(media.info.path);
    for (const TrackData& track : edit.tracks)
        for (const SegmentData& segment : track.segments)
            for (const EffectData& effect : segment.effects)
                if (!allowed.refuseEffect(effect.service).empty())
                    names.insert(effect.service);
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "\"" : ", \"") + name + '"';
    if (!list.empty())
        warnings.add("Kept, but not active here: " + list + '.');
}

std::vector<ObjectId> findMissing(const EditData& edit)
{
    std::vector<ObjectId> missing;
    for (const MediaData& media : edit.media) {
        std::error_code ignored;
        // What does not begin so is no file, but a picture that is made.
        if (media.info.path.starts_with('/') && !fs::exists(media.info.path, ignored))
            missing.push_back(media.id);
    }
    return missing;
}
} // namespace

ProjectReading parseProject(std::string_view bytes, const fs::path& folder, const EffectCatalogue& catalogue,
                            const std::stop_token& stop)
{
    ProjectReading reading;
    pugi::xml_document document;
    reading.error = parseXml(document, bytes);
    if (!reading.error.empty())
        return reading;

    Warnings warnings;
    EditData edit;
    const pugi::xml_node mlt = document.document_element();
    if (const pugi::xml_node tractor = findEditTractor(mlt)) {
        reading.error = ProjectReader(mlt, MediaPaths(folder), catalogue, warnings).read(tractor, edit);
        reading.view = propertiesFrom(parseJson(propertyOf(tractor, format::kViewProperty)).value);
    } else {
        reading.imported = true;
        edit = importMlt(mlt, folder, catalogue, warnings, stop);
        if (edit.tracks.empty())
            reading.error = "there is nothing in it that this program could show";
        edit.original = validText(std::string(bytes).c_str());
        warnOfRefused(edit, catalogue, warnings);
    }
    if (stop.stop_requested())
        reading.error = "that was given up";
    if (!reading.error.empty())
        return reading;

    repairEdit(edit, warnings);
    warnOfRanges(edit, catalogue, warnings);
    reading.error = findFault(edit);
    reading.warnings = warnings.take();
    if (reading.error.empty()) {
        reading.missingMedia = findMissing(edit);
        reading.edit = std::move(edit);
    }
    return reading;
}

ProjectReading readProject(const fs::path& path, const EffectCatalogue& catalogue, const std::stop_token& stop)
{
    const FileContents file = readFile(path, kLargestFile);
    ProjectReading reading;
    if (!file.error.empty()) {
        reading.error = file.error;
        return reading;
    }
    reading = parseProject(file.bytes, behindLinks(path).parent_path(), catalogue, stop);
    if (!reading.error.empty())
        reading.error = "Cannot open \"" + path.string() + "\": " + reading.error + ".";
    return reading;
}

} // namespace workbench
