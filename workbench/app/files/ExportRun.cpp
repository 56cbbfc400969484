#include "workbench/app/files/ExportRun.h"

#include "workbench/model/EditModel.h"
#include "workbench/model/projection/ProjectionQueries.h"
#include "workbench/model/projection/Projector.h"

#include <memory>
#include <utility>

namespace workbench
{

std::vector<std::string> filesUsedBy(const EditModel& edit, const std::filesystem::path& project)
{
    std::vector<std::string> files;
    const auto add = [&files](const std::string& path) {
        // What does not begin so is a picture that is made.
        if (path.starts_with('/'))
            files.push_back(path);
    };
    for (const MediaData& media : edit.timeline().media())
        add(media.info.path);
    for (const auto& track : edit.timeline().tracks())
        for (const TransitionData& transition : track->data.transitions)
            add(transition.wipe);
    add(project.string());
    return files;
}

std::string namesOf(const std::vector<std::string>& effects, const Projection& edit)
{
    std::string names;
    for (const std::string& id : effects)
        if (const ProjectedFilter* const effect = findEffect(edit, id))
            names += (names.empty() ? "" : ", ") + nameInQuotes(*effect);
    return names;
}

std::string startExport(Exporter& exporter, const EditModel& edit, const std::filesystem::path& projectFile,
                        const ExportRequest& request, ExportEvents events)
{
    auto target = std::make_shared<ExportTarget>(request.path, filesUsedBy(edit, projectFile), request.existing);
    if (!target->error().empty())
        return target->error();
    ExportSettings settings;
    settings.path = target->partial().string();
    settings.from = request.from;
    settings.to = request.to;
    settings.bypassed = request.without;
    Projection projection = project(edit);
    const std::string without = namesOf(request.without, projection);
    ExportCallbacks callbacks;
    callbacks.progress = std::move(events.progress);
    callbacks.finished = [target = std::move(target), without,
                          finished = std::move(events.finished)](ExportResult result) mutable {
        if (result.outcome == ExportResult::Outcome::Done && !target->complete())
            result = {ExportResult::Outcome::Failed, target->error()};
        if (result.outcome == ExportResult::Outcome::Done && !without.empty())
            result.message.append(result.message.empty() ? "" : "\n").append("It was made without " + without + ".");
        const std::filesystem::path where = target->path();
        // What was not completed is gone before anybody hears of the end.
        target.reset();
        finished(result, where);
    };
    const bool begun = exporter.start(std::move(projection), std::move(settings), std::move(callbacks));
    return begun ? std::string() : "Another export is under way. Wait for it, or cancel it.";
}

} // namespace workbench
