#pragma once

#include "workbench/engine/client/Exporter.h"
#include "workbench/store/files/ExportTarget.h"

#include <functional>
#include <string>
#include <vector>

namespace workbench
{

class EditModel;
struct Projection;

/** What somebody asked to have exported. */
struct ExportRequest {
    std::string path; ///< its extension chooses the format
    int from = 0;     ///< first frame of the edit
    int to = -1;      ///< last frame; -1 for the last of the edit
    ExportTarget::Existing existing = ExportTarget::Existing::Keep;
    std::vector<std::string> without; ///< ids of effects that are left out
};

/** Called on the exporter's thread. */
struct ExportEvents {
    std::function<void(int framesDone, int framesTotal)> progress;
    /** Exactly once for each export that began; `where` is the file that it made. */
    std::function<void(const ExportResult& result, const std::filesystem::path& where)> finished;
};

/** The files that must not be exported onto: what the edit is made of, and the file of its project, if it has one. */
std::vector<std::string> filesUsedBy(const EditModel& edit, const std::filesystem::path& project);

/** What a message calls these effects of an edit, by their ids; empty where it has none of them. */
std::string namesOf(const std::vector<std::string>& effects, const Projection& edit);

/**
 * Exports an edit whose project is in that file, if in any. Returns why it cannot begin, for a person to read, or
 * nothing.
 */
std::string startExport(Exporter& exporter, const EditModel& edit, const std::filesystem::path& project,
                        const ExportRequest& request, ExportEvents events);

} // namespace workbench
