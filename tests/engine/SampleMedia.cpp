#include "tests/engine/SampleMedia.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace workbench
{

namespace fs = std::filesystem;

namespace
{

class Folder : public testing::Environment
{
public:
    Folder()
        : path(fs::temp_directory_path() / ("oribund-engine-" + std::to_string(getpid())))
    {
        fs::create_directories(path);
        setenv("ORIBUND_ENGINE", ORIBUND_ENGINE_PROGRAM, 0);
        setenv("MLT_FREI0R_PLUGIN_PATH",
               ORIBUND_TEST_EFFECTS ":/usr/lib/frei0r-1:/usr/lib/x86_64-linux-gnu/frei0r-1:/usr/lib64/frei0r-1", 0);
    }

    void TearDown() override
    {
        std::error_code ignored;
        fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ignored);
        fs::remove_all(path, ignored);
    }

    fs::path path;
};

Folder& sampleFolder()
{
    static auto* const folder = static_cast<Folder*>(testing::AddGlobalTestEnvironment(new Folder));
    return *folder;
}

// Registered before main() runs the tests, so that it is torn down after them.
[[maybe_unused]] const Folder& registered = sampleFolder();

} // namespace

const fs::path& SampleMedia::folder()
{
    return sampleFolder().path;
}

std::string SampleMedia::make(const std::string& name, const std::string& arguments)
{
    const fs::path file = folder() / name;
    if (!fs::exists(file)) {
        const std::string command =
            "ffmpeg -v error -nostdin -y " + arguments + " '" + file.string() + "' </dev/null >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("ffmpeg cannot make " + name);
    }
    return file.string();
}

std::string SampleMedia::clip()
{
    return make("clip.mp4",
                "-f lavfi -i mandelbrot=s=320x180:r=25:maxiter=200 "
                "-f lavfi -i \"aevalsrc='0.3*sin(2*PI*440*t)|0.2*sin(2*PI*1500*t)':s=48000\" "
                "-t 3 -c:v libx264 -preset veryfast -crf 12 -g 12 -bf 0 -pix_fmt yuv420p -c:a aac -b:a 160k");
}

std::shared_ptr<EngineHost> testEngine()
{
    static const std::shared_ptr<EngineHost> shared = [] {
        auto host = std::make_shared<EngineHost>();
        Installed known = *host->installed();
        EffectDescription hanging;
        hanging.service = kHanging;
        known.effects.add(std::move(hanging));
        host->setInstalled(std::move(known));
        return host;
    }();
    return shared;
}

Projection sampleEdit()
{
    Projection edit;
    edit.profile = {320, 180, 25, 1, 1, 1, 709, true};
    edit.length = kSampleFrames;
    edit.clips.push_back({"background", "color", "#ff204060", 0, kSampleFrames - 1, {}, {}});
    edit.clips.push_back({"clip1", "", SampleMedia::clip(), 0, kSampleFrames - 1, {}, {}});
    for (const char* clip : {"background", "clip1"}) {
        ProjectedEntry entry;
        entry.kind = ProjectedEntry::Kind::Clip;
        entry.length = kSampleFrames;
        entry.first = {clip, 0, kSampleFrames - 1};
        edit.tracks.push_back({clip, "", ProjectedTrack::Hide::Nothing, {entry}});
    }
    edit.transitions.push_back({"overlay", "frei0r.cairoblend", 0, 1, 0, 0, {}});
    edit.transitions.push_back({"sound", "mix", 0, 1, 0, 0, {{"sum", "1"}}});
    return edit;
}

Projection sampleEdit(const std::string& service, ProjectedProperties properties)
{
    Projection edit = sampleEdit();
    edit.clips[1].filters.push_back({kSampleEffect, service, 0, kSampleFrames - 1, std::move(properties)});
    return edit;
}

} // namespace workbench
