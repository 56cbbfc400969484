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

std::vector<MediaProbeResult> probeAll(MltSession& session, const std::vector<std::string>& paths)
{
    std::vector<MediaProbeResult> results;
    for (const std::string& path : paths) {
        std::error_code error;
        const std::filesystem::path full = std::filesystem::absolute(path, error);
        results.push_back(probeMedia(session, error ? path : full.lexically_normal().string()));
    }
    return results;
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
    background_.run([this, session = workspace_.session(), paths = std::move(paths)]() -> Background::Completion {
        auto media = std::make_shared<const Probed>(probeAll(*session, paths));
        return [this, media] { place(workspace_, *media); };
    });
}

bool MediaImporter::importNow(Workspace& workspace, const std::vector<std::string>& paths)
{
    return place(workspace, probeAll(*workspace.session(), paths));
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
            say(result.warning);
        // An edit in which nothing has been done takes its format from the first film.
        const FormatData format = formatFor(*result.info);
        if (isUntouched(workspace.edit()) && format != workspace.edit().format())
            workspace.show(oribund::Kt::makePtr<EditModel>(emptyEdit({}, format), workspace.catalogue()));
        const EditOutcome outcome = appendMedia(workspace.edit(), *result.info);
        if (!outcome)
            say(quotedFile(result.info->path) + " was not added: " + outcome.refused);
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
