#include "workbench/app/start/BatchJobs.h"

#include "workbench/app/files/Document.h"
#include "workbench/app/files/ExportRun.h"
#include "workbench/app/files/MediaImporter.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace workbench
{

namespace
{

bool openProject(Workspace& workspace, const std::string& path)
{
    const ProjectReading reading = readProject(path, workspace.catalogue());
    for (const std::string& warning : reading.warnings)
        warn(quotedFile(path) + ": " + warning);
    if (!reading) {
        say(quotedFile(path) + " was not opened. " + reading.error);
        return false;
    }
    workspace.show(oribund::Kt::makePtr<EditModel>(*reading.edit, workspace.catalogue()));
    return true;
}

/** The project among the files of the command line; empty for none. */
std::filesystem::path projectNamedBy(const CommandLine& commandLine)
{
    const auto& files = commandLine.files;
    const auto project = std::find_if(files.rbegin(), files.rend(), Document::isProjectName);
    std::error_code failed;
    return project == files.rend() ? std::filesystem::path() : std::filesystem::absolute(*project, failed);
}

int frameOf(double seconds, const FormatData& format)
{
    return static_cast<int>(std::lround(std::min(seconds / format.frameLength(), 1e9)));
}

} // namespace

bool openAll(Workspace& workspace, const CommandLine& commandLine)
{
    std::vector<std::string> media;
    for (const std::string& path : commandLine.files) {
        if (!Document::isProjectName(path))
            media.push_back(path);
        else if (!openProject(workspace, path))
            return false;
    }
    return media.empty() || MediaImporter::importNow(workspace, media);
}

int exportFile(Workspace& workspace, const CommandLine& commandLine)
{
    // Why there are none was said when they were looked for.
    if (workspace.exportPresets().empty() || !openAll(workspace, commandLine))
        return 1;
    const EditModel& edit = workspace.edit();
    const int frames = edit.timeline().endFrame();
    ExportRequest request;
    request.path = commandLine.exportPath;
    request.from = commandLine.from ? frameOf(*commandLine.from, edit.format()) : 0;
    request.to = (commandLine.to ? std::min(frameOf(*commandLine.to, edit.format()), frames) : frames) - 1;
    if (request.from > request.to) {
        say("There is nothing to export between these times.");
        return 1;
    }
    if (commandLine.replaceExisting)
        request.existing = ExportTarget::Existing::Replace;
    ExportResult result;
    std::filesystem::path made;
    ExportEvents events;
    const bool watched = isatty(STDERR_FILENO);
    events.progress = [watched](int done, int total) {
        if (watched)
            std::fprintf(stderr, "\r%d of %d frames", done, total);
    };
    events.finished = [&](const ExportResult& end, const std::filesystem::path& where) {
        result = end;
        made = where;
    };
    Exporter exporter(workspace.engine());
    const std::filesystem::path project = projectNamedBy(commandLine);
    if (const std::string fault = startExport(exporter, edit, project, request, std::move(events)); !fault.empty()) {
        say(fault);
        return 1;
    }
    exporter.wait();
    if (watched)
        std::fputc('\n', stderr);
    if (result.outcome != ExportResult::Outcome::Done) {
        say("The export failed. " + result.message);
        return 1;
    }
    if (!result.message.empty())
        say(result.message);
    std::printf("%s\n", made.c_str());
    return 0;
}

int listEffects(const Workspace& workspace)
{
    // Why there are none was said when they were looked for.
    if (workspace.catalogue().all().empty())
        return 1;
    for (const EffectCatalogue::Entry& effect : workspace.catalogue().all())
        if (effect->blockedBecause.empty())
            std::printf("%-34s %-28s %s\n", effect->service.c_str(), effect->title.c_str(), effect->category.c_str());
    return 0;
}

} // namespace workbench
