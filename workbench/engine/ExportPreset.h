#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench
{

class MltSession;

/** Smaller pictures than this no encoder takes. */
inline constexpr int kSmallestSide = 16;

/** How a kind of file is written: the properties of the consumer that encodes it. */
struct ExportPreset {
    std::string extension; ///< without the dot, lower case
    std::string label;     ///< for a person
    bool video = true;
    std::vector<std::pair<std::string, std::string>> properties;
    int largestSide = 16384; ///< of a picture, in pixels; sides are even, and at least kSmallestSide
};

/** The kinds of file that can be written here, in the order in which they are offered. */
std::vector<ExportPreset> exportPresets(MltSession& session);

/** Null when no preset has the extension of the path. */
const ExportPreset* findExportPreset(const std::vector<ExportPreset>& presets, std::string_view path);

} // namespace workbench
