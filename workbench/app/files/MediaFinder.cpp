#include "workbench/app/files/MediaFinder.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/EditGesture.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/store/files/MediaPaths.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace workbench
{

namespace
{
namespace fs = std::filesystem;

/** The first of the places at which there is a media file. */
MediaProbeResult probeFirst(EngineHost& engine, const std::vector<fs::path>& places)
{
    std::error_code ignored;
    for (const fs::path& place : places)
        if (fs::is_regular_file(place, ignored))
            if (MediaProbeResult result = engine.probeMedia(place.string()); result.info)
                return result;
    return {};
}
} // namespace

/** A missing medium and what is in the file that may be it. */
struct MediaFinder::Found {
    MediaData media;
    MediaProbeResult file;
};

MediaFinder::MediaFinder(Workspace& workspace)
    : workspace_(workspace)
{
}

std::vector<MediaData> MediaFinder::missing() const
{
    std::vector<MediaData> found = workspace_.edit().timeline().media();
    std::erase_if(found, [](const MediaData& media) {
        std::error_code ignored;
        return !media.info.path.starts_with('/') || fs::exists(media.info.path, ignored);
    });
    return found;
}

void MediaFinder::relink(const MediaData& media, const std::string& path, std::function<void()> done)
{
    std::vector<MediaData> others = missing();
    std::erase_if(others, [&media](const MediaData& other) { return other.id == media.id; });
    background_.run([this, engine = workspace_.engine(), media, path, others = std::move(others),
                     done = std::move(done)]() -> Background::Completion {
        auto found = std::make_shared<std::vector<Found>>();
        found->push_back({media, engine->probeMedia(path)});
        for (const MediaData& other : others)
            if (MediaProbeResult file = probeFirst(*engine, placesAfterMove(media.info.path, path, other.info.path));
                file.info)
                found->push_back({other, std::move(file)});
        return [this, found, done] {
            take(*found);
            done();
        };
    });
}

void MediaFinder::take(const std::vector<Found>& found)
{
    EditModel& edit = workspace_.edit();
    const std::string first = quotedFile(found.front().media.info.path);
    oribund::EditGesture gesture;
    gesture.begin(oribund::EditPtr(&edit), oribund::UIString(oribund::toWide("Find " + first)));
    int followed = -1; // the first is no neighbour
    for (const auto& [media, file] : found) {
        // Meanwhile another project may have been opened.
        const MediaData* const known = edit.timeline().findMedia(media.id);
        if (!known || known->info.path != media.info.path)
            continue;
        const EditOutcome outcome =
            file.info ? workspace_.editor().relinkMedia({media.id, *file.info}) : EditOutcome::refuse(file.problem);
        if (!outcome)
            warn(quotedFile(media.info.path) + " was not found again. " + outcome.refused);
        followed += static_cast<bool>(outcome);
    }
    gesture.finish();
    if (followed > 0)
        say("With " + first + ", " + std::to_string(followed) + " more media files were found.",
            oribund::MessageSink::Severity::Information);
}

} // namespace workbench
