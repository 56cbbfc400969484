#include "workbench/app/files/MediaImporter.h"

#include "oribund/host/base/UIString.h"
#include "workbench/app/session/ClipPlacement.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"

#include <filesystem>
#include <utility>

namespace workbench
{

namespace
{

MediaProbeResult probe(EngineHost& engine, const std::string& path)
{
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error);
    return engine.probeMedia(error ? path : full.lexically_normal().string());
}

bool isUntouched(EditModel& edit)
{
    return edit.timeline().endFrame() == 0 && edit.undoStack().size() == 0;
}

} // namespace

MediaImporter::MediaImporter(Workspace& workspace)
    : workspace_(workspace)
{
}

void MediaImporter::import(std::vector<std::string> paths)
{
    wanted_ += static_cast<int>(paths.size());
    readOn(std::make_shared<Batch>(Batch{std::move(paths), {}}));
}

void MediaImporter::readOn(const std::shared_ptr<Batch>& batch)
{
    if (progressed)
        progressed(read_, wanted_);
    if (batch->media.size() == batch->paths.size()) {
        if (!isBusy())
            read_ = wanted_ = 0;
        if (progressed)
            progressed(read_, wanted_);
        place(workspace_, batch->media);
        return;
    }
    const std::string path = batch->paths[batch->media.size()];
    background_.run([this, engine = workspace_.engine(), batch, path]() -> Background::Completion {
        return [this, batch, result = probe(*engine, path)] {
            batch->media.push_back(result);
            ++read_;
            readOn(batch);
        };
    });
}

bool MediaImporter::importNow(Workspace& workspace, const std::vector<std::string>& paths)
{
    Probed media;
    for (const std::string& path : paths)
        media.push_back(probe(*workspace.engine(), path));
    return place(workspace, media);
}

bool MediaImporter::place(Workspace& workspace, const Probed& media)
{
    ObjectId first = kNoObject;
    for (const MediaProbeResult& result : media) {
        if (!result.info) {
            say(result.problem, oribund::MessageSink::Severity::Error);
            continue;
        }
        if (!result.warning.empty())
            warn(result.warning);
        // An edit in which nothing has been done takes its format from the first film.
        const FormatData format = formatFor(*result.info);
        if (isUntouched(workspace.edit()) && format != workspace.edit().format())
            workspace.show(oribund::Kt::makePtr<EditModel>(emptyEdit({}, format), workspace.catalogue()));
        const EditOutcome outcome = appendMedia(workspace.edit(), *result.info);
        if (!outcome)
            warn(quotedFile(result.info->path) + " was not added: " + outcome.refused);
        else if (first == kNoObject)
            first = outcome.object;
    }
    if (first == kNoObject)
        return false;
    workspace.selection().set(first);
    const Segment* const segment = workspace.edit().timeline().findSegment(first);
    workspace.vob().setCurrentTime(workspace.vob().timeOf(segment->data.start));
    return true;
}

} // namespace workbench
