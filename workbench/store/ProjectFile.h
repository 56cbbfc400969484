#pragma once

#include "workbench/model/EditData.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace workbench
{

class EditModel;
class EffectCatalogue;

/**
 * Project files. One is MLT XML that renders to what the edit shows; what MLT has no notion of (curves with their
 * tangents, cues, names, identities) rides along in properties that begin with "oribund:", and is what is read back.
 *
 * Media that lies in the project's folder or below is named relative to it, so that the two can be moved together. The
 * folder of a project that is reached through a link is the one in which its file really lies. A name that is not UTF-8
 * is saved as textOfPath() says; `melt` does not find such a file.
 */

/** Things that a project remembers and that are no part of the edit, such as the current time: names and values. */
using ViewState = PropertyList;

/** The bytes of a project file in `folder`; an empty folder names all media absolutely. User-interface thread. */
std::string projectXml(const EditModel& edit, const ViewState& view, const std::filesystem::path& folder);

/** Writes a project, whole or not at all. Returns what went wrong, or nothing. */
std::string saveProject(const std::filesystem::path& path, const EditModel& edit, const ViewState& view);

/** What came of reading a project. */
struct ProjectReading {
    std::optional<EditData> edit; ///< without a fault (findFault()); empty when the file was refused
    ViewState view;
    std::string error;                  ///< why it was refused, for a person to read
    std::vector<std::string> warnings;  ///< what was mended, left out or taken differently, a sentence each
    std::vector<ObjectId> missingMedia; ///< media of the edit whose file is not there
    bool imported = false;              ///< not one of ours: MLT XML by another program, taken as far as understood

    explicit operator bool() const { return edit.has_value(); }
};

/**
 * Reads a project, or MLT XML by another program. A file that is cut off, that a newer version has written or that is
 * something else is refused; single values that make no sense are mended, with a warning each. The file is not touched.
 *
 * Any thread. It ends early, with an error, where that is asked for.
 *
 * The catalogue says what the effects in another program's file mean; those it does not know are kept as they are.
 */
ProjectReading readProject(const std::filesystem::path& path, const EffectCatalogue& catalogue,
                           const std::stop_token& stop = {});

/** As readProject(), from the bytes of a file in `folder`. */
ProjectReading parseProject(std::string_view bytes, const std::filesystem::path& folder,
                            const EffectCatalogue& catalogue, const std::stop_token& stop = {});

} // namespace workbench
