#include "workbench/store/mlt/MltXmlWriter.h"

#include "workbench/store/files/MediaPaths.h"
#include "workbench/store/files/PathText.h"
#include "workbench/store/files/ProjectFormat.h"

#include "oribund/host/base/LightweightString.h"

#include <algorithm>
#include <pugixml.hpp>

namespace workbench
{

namespace
{
constexpr const char* kReplacement = "\xef\xbf\xbd";

class MltXmlWriter
{
public:
    MltXmlWriter(const MediaPaths& paths, const ExtraProperties& extra, pugi::xml_node mlt)
        : paths_(paths)
        , extra_(extra)
        , mlt_(mlt)
    {
    }

    void write(const Projection& projection)
    {
        mlt_.append_attribute("LC_NUMERIC") = "C";
        mlt_.append_attribute("producer") = kEditTractor;
        addProfile(projection.profile);
        for (const ProjectedClip& clip : projection.clips)
            addClip(clip);
        for (const ProjectedTrack& track : projection.tracks)
            addTrack(track);
        addEdit(projection);
    }

private:
    pugi::xml_node addElement(pugi::xml_node parent, const char* kind, const std::string& id)
    {
        pugi::xml_node node = parent.append_child(kind);
        node.append_attribute("id") = xmlText(id).c_str();
        return node;
    }

    static void addProperty(pugi::xml_node node, const std::string& name, const std::string& value)
    {
        pugi::xml_node property = node.append_child("property");
        property.append_attribute("name") = xmlText(name).c_str();
        property.text() = xmlText(value).c_str();
    }

    void addProperties(pugi::xml_node node, const ProjectedProperties& properties)
    {
        for (const ProjectedProperty& property : properties)
            addProperty(node, property.name, property.value);
    }

    void addExtra(pugi::xml_node node, const std::string& id)
    {
        if (const auto found = extra_.find(id); found != extra_.end())
            for (const auto& [name, value] : found->second)
                addProperty(node, name, value);
    }

    static void addRange(pugi::xml_node node, int in, int out)
    {
        node.append_attribute("in") = in;
        node.append_attribute("out") = out;
    }

    void addProfile(const ProjectedProfile& profile)
    {
        pugi::xml_node node = mlt_.append_child("profile");
        node.append_attribute("width") = profile.width;
        node.append_attribute("height") = profile.height;
        node.append_attribute("frame_rate_num") = profile.fpsNumerator;
        node.append_attribute("frame_rate_den") = profile.fpsDenominator;
        node.append_attribute("sample_aspect_num") = profile.sampleAspectNumerator;
        node.append_attribute("sample_aspect_den") = profile.sampleAspectDenominator;
        node.append_attribute("display_aspect_num") =
            static_cast<long long>(profile.width) * profile.sampleAspectNumerator;
        node.append_attribute("display_aspect_den") =
            static_cast<long long>(profile.height) * profile.sampleAspectDenominator;
        node.append_attribute("colorspace") = profile.colourspace;
        node.append_attribute("progressive") = profile.progressive ? 1 : 0;
    }

    void addClip(const ProjectedClip& clip)
    {
        pugi::xml_node node = addElement(mlt_, "producer", clip.id);
        if (!clip.service.empty())
            addProperty(node, "mlt_service", clip.service);
        addProperty(node, "resource",
                    clip.resource.starts_with('/') ? textOfPath(paths_.saved(clip.resource)) : clip.resource);
        addProperties(node, clip.properties);
        addExtra(node, clip.id);
        for (const ProjectedFilter& filter : clip.filters) {
            pugi::xml_node effect = addElement(node, "filter", filter.id);
            addRange(effect, filter.in, filter.out);
            addProperty(effect, "mlt_service", filter.service);
            addProperties(effect, filter.properties);
            if (!filter.partOf.empty())
                addProperty(effect, format::kPartProperty, filter.partOf);
            addExtra(effect, filter.id);
        }
    }

    void addTransition(pugi::xml_node tractor, const ProjectedTransition& transition)
    {
        pugi::xml_node node = addElement(tractor, "transition", transition.id);
        if (transition.in != 0 || transition.out != 0)
            addRange(node, transition.in, transition.out);
        addProperty(node, "mlt_service", transition.service);
        addProperty(node, "a_track", std::to_string(transition.aTrack));
        addProperty(node, "b_track", std::to_string(transition.bTrack));
        addProperties(node, transition.properties);
    }

    /** Overlaid pieces are a tractor of their own, which stands before the track that shows it. Yields its id. */
    std::string addMix(const ProjectedTrack& track, std::size_t index)
    {
        const ProjectedEntry& entry = track.entries[index];
        std::string id = track.id + "-mix" + std::to_string(index);
        pugi::xml_node node = addElement(mlt_, "tractor", id);
        addRange(node, 0, entry.length - 1);
        for (const ProjectedCut* cut : {&entry.first, &entry.second}) {
            pugi::xml_node piece = node.append_child("track");
            piece.append_attribute("producer") = cut->clip.c_str();
            addRange(piece, cut->in, cut->out);
        }
        for (const ProjectedTransition& transition : entry.transitions)
            addTransition(node, transition);
        return id;
    }

    static void addEntry(pugi::xml_node playlist, const std::string& producer, int in, int out)
    {
        pugi::xml_node node = playlist.append_child("entry");
        node.append_attribute("producer") = producer.c_str();
        addRange(node, in, out);
    }

    void addTrack(const ProjectedTrack& track)
    {
        std::map<std::size_t, std::string> mixes;
        for (std::size_t i = 0; i < track.entries.size(); ++i)
            if (track.entries[i].kind == ProjectedEntry::Kind::Mix)
                mixes[i] = addMix(track, i);

        pugi::xml_node node = addElement(mlt_, "playlist", track.id);
        addExtra(node, track.id);
        for (std::size_t i = 0; i < track.entries.size(); ++i) {
            const ProjectedEntry& entry = track.entries[i];
            if (entry.kind == ProjectedEntry::Kind::Blank)
                node.append_child("blank").append_attribute("length") = entry.length;
            else if (entry.kind == ProjectedEntry::Kind::Clip)
                addEntry(node, entry.first.clip, entry.first.in, entry.first.out);
            else
                addEntry(node, mixes[i], 0, entry.length - 1);
        }
    }

    void addEdit(const Projection& projection)
    {
        pugi::xml_node node = addElement(mlt_, "tractor", kEditTractor);
        addRange(node, 0, projection.length - 1);
        addExtra(node, kEditTractor);
        for (const ProjectedTrack& track : projection.tracks) {
            static const char* const hidden[] = {"", "video", "audio", "both"};
            pugi::xml_node piece = node.append_child("track");
            piece.append_attribute("producer") = track.id.c_str();
            if (track.hide != ProjectedTrack::Hide::Nothing)
                piece.append_attribute("hide") = hidden[static_cast<std::size_t>(track.hide)];
        }
        for (const ProjectedTransition& transition : projection.transitions)
            addTransition(node, transition);
    }

    const MediaPaths& paths_;
    const ExtraProperties& extra_;
    pugi::xml_node mlt_;
};
} // namespace

void writeMlt(const Projection& projection, const MediaPaths& paths, const ExtraProperties& extra, pugi::xml_node mlt)
{
    MltXmlWriter(paths, extra, mlt).write(projection);
}

std::string xmlText(const std::string& text)
{
    if (std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7f; }))
        return text;
    // What is not UTF-8 is repaired on the way there and back.
    const std::string valid(oribund::toUTF8(oribund::toWide(std::string_view(text))).view());
    std::string result;
    result.reserve(valid.size());
    for (std::size_t i = 0; i < valid.size(); ++i) {
        const auto c = static_cast<unsigned char>(valid[i]);
        const bool isControl = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
        const bool isNoCharacter = valid.compare(i, 3, "\xef\xbf\xbe") == 0 || valid.compare(i, 3, "\xef\xbf\xbf") == 0;
        if (isControl || isNoCharacter) {
            result += kReplacement;
            i += isNoCharacter ? 2 : 0;
        } else {
            result += valid[i];
        }
    }
    return result;
}

} // namespace workbench
