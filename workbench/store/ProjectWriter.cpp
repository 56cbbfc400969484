#include "workbench/store/ProjectFile.h"
#include "workbench/store/files/AtomicFile.h"
#include "workbench/store/files/FileIdentity.h"
#include "workbench/store/files/MediaPaths.h"
#include "workbench/store/files/ProjectFormat.h"
#include "workbench/store/json/EditJson.h"
#include "workbench/store/json/EffectJson.h"
#include "workbench/store/mlt/MltXmlWriter.h"

#include "workbench/model/EditModel.h"
#include "workbench/model/projection/Admission.h"
#include "workbench/model/projection/AllowList.h"
#include "workbench/model/projection/Projector.h"

#include <pugixml.hpp>

namespace workbench
{

namespace
{
/** Collects what is written into a text. */
struct TextSink : pugi::xml_writer {
    void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }

    std::string text;
};

ExtraProperties ownData(const EditData& edit, const ViewState& view, const MediaPaths& paths)
{
    ExtraProperties extra;
    extra[kEditTractor] = {{format::kVersionProperty, std::to_string(format::kVersion)},
                           {format::kEditProperty, compactText(editJson(edit, paths))},
                           {format::kViewProperty, compactText(toJson(view))}};
    for (const TrackData& track : edit.tracks) {
        extra[trackId(track.id)] = {{format::kTrackProperty, compactText(trackJson(track))}};
        for (const SegmentData& segment : track.segments) {
            extra[clipId(segment.id)] = {{format::kSegmentProperty, compactText(segmentJson(segment, track.id))}};
            for (const EffectData& effect : segment.effects)
                extra[filterId(effect.id)] = {{format::kEffectProperty, compactText(toJson(effect))}};
        }
    }
    return extra;
}
} // namespace

std::string projectXml(const EditModel& edit, const ViewState& view, const std::filesystem::path& folder)
{
    const EditData data = edit.snapshot();
    const MediaPaths paths(folder);
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "utf-8";
    pugi::xml_node mlt = document.append_child("mlt");
    mlt.append_attribute("title") = xmlText(data.name).c_str();
    // What must not be made here must not be made by another program that plays the file either. Nothing is lost of it:
    // what is read back is our own data beside it.
    const Admission admission = admit(project(edit), AllowList(edit.catalogue()));
    writeMlt(admission.projection, paths, ownData(data, view, paths), mlt);
    TextSink sink;
    document.save(sink, " ");
    return std::move(sink.text);
}

std::string saveProject(const std::filesystem::path& path, const EditModel& edit, const ViewState& view)
{
    return replaceFile(path, projectXml(edit, view, behindLinks(path).parent_path()));
}

} // namespace workbench
