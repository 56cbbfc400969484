#include "workbench/engine/worker/ExportPreset.h"

#include "workbench/engine/worker/catalogue/MetadataText.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <mlt++/Mlt.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <set>

namespace workbench
{

namespace
{

/** While it exists, what is printed on stdout gets lost: asked for its encoders, the framework prints them too. */
class SilentStdout
{
public:
    SilentStdout()
        : kept_(dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (nowhere < 0)
            return;
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }

    ~SilentStdout()
    {
        std::fflush(stdout);
        if (kept_ < 0)
            return;
        dup2(kept_, STDOUT_FILENO);
        close(kept_);
    }

    SilentStdout(const SilentStdout&) = delete;
    SilentStdout& operator=(const SilentStdout&) = delete;

private:
    int kept_;
};

/** Names of the encoders of one kind, "vcodec" or "acodec", that are built in. */
std::set<std::string> listEncoders(const char* kind)
{
    Mlt::Profile profile;
    Mlt::Consumer consumer(profile, "avformat");
    std::set<std::string> names;
    if (!consumer.is_valid())
        return names;
    consumer.set(kind, "list");
    {
        const SilentStdout silence;
        consumer.start(); // only fills the list
    }
    Mlt::Properties list(static_cast<mlt_properties>(consumer.get_data(kind)));
    for (int i = 0; list.is_valid() && i < list.count(); ++i)
        if (const char* name = list.get(i))
            names.insert(name);
    return names;
}

/** They stay the same as long as the process runs. */
const std::set<std::string>& videoEncoders()
{
    static const std::set<std::string> names = listEncoders("vcodec");
    return names;
}

const std::set<std::string>& audioEncoders()
{
    static const std::set<std::string> names = listEncoders("acodec");
    return names;
}

std::string firstOf(const std::set<std::string>& available, std::initializer_list<const char*> wanted)
{
    for (const char* name : wanted)
        if (available.contains(name))
            return name;
    return {};
}

using Properties = std::vector<std::pair<std::string, std::string>>;

Properties videoProperties(const std::string& codec)
{
    Properties properties{{"vcodec", codec}, {"pix_fmt", "yuv420p"}, {"g", "12"}, {"bf", "0"}};
    if (codec == "libx264") {
        properties.insert(properties.end(), {{"crf", "18"}, {"preset", "fast"}});
    } else if (codec == "libvpx-vp9" || codec == "libvpx") {
        properties.insert(properties.end(), {{"vb", "0"}, {"crf", "24"}, {"deadline", "realtime"}, {"cpu-used", "6"}});
        std::erase_if(properties, [](const auto& property) { return property.first == "bf"; });
    } else {
        properties.emplace_back("qscale", "2");
    }
    return properties;
}

ExportPreset makePreset(std::string extension, std::string label, std::string format, const std::string& video,
                        const std::string& audio)
{
    ExportPreset preset{std::move(extension), std::move(label), true, videoProperties(video)};
    if (video == "mpeg4")
        preset.largestSide = 8190;
    preset.properties.insert(preset.properties.begin(), {"f", std::move(format)});
    if (audio.empty())
        preset.properties.emplace_back("an", "1");
    else
        preset.properties.insert(preset.properties.end(), {{"acodec", audio}, {"ab", "192k"}});
    return preset;
}

} // namespace

std::vector<ExportPreset> exportPresets(MltSession&)
{
    const std::set<std::string>& video = videoEncoders();
    const std::set<std::string>& audio = audioEncoders();
    const std::string common = firstOf(video, {"libx264", "mpeg4"});
    const std::string commonSound = firstOf(audio, {"aac", "libmp3lame", "mp2"});
    const std::string web = firstOf(video, {"libvpx-vp9", "libvpx"});
    const std::string webSound = firstOf(audio, {"libopus", "libvorbis"});

    std::vector<ExportPreset> presets;
    if (!common.empty()) {
        presets.push_back(makePreset("mp4", "MP4 film", "mp4", common, commonSound));
        presets.back().properties.emplace_back("movflags", "+faststart");
        presets.push_back(makePreset("mov", "QuickTime film", "mov", common, commonSound));
        presets.push_back(makePreset("mkv", "Matroska film", "matroska", common, commonSound));
    }
    if (!web.empty())
        presets.push_back(makePreset("webm", "WebM film", "webm", web, webSound));
    if (audio.contains("pcm_s16le"))
        presets.push_back({"wav", "Sound only (WAV)", false, {{"f", "wav"}, {"acodec", "pcm_s16le"}, {"vn", "1"}}});
    return presets;
}

} // namespace workbench
