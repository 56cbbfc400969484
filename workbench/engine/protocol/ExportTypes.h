#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench
{

/** Smaller pictures than this no encoder takes. */
inline constexpr int kSmallestSide = 16;

/** How a kind of file is written: the properties of the consumer that encodes it. */
struct ExportPreset {
    std::string extension; ///< without the dot, lower case
    std::string label;     ///< for a person
    bool video = true;
    std::vector<std::pair<std::string, std::string>> properties;
    int largestSide = 16384; ///< of a picture, in pixels; sides are even, and at least kSmallestSide

    bool operator==(const ExportPreset&) const = default;
};

struct ExportSettings {
    std::string path;                              ///< absolute; its extension chooses the preset
    int from = 0;                                  ///< first frame of the edit
    int to = -1;                                   ///< last frame; -1 for the last of the edit
    std::chrono::milliseconds stallTimeout{30000}; ///< without a frame for so long, the export is given up
    std::vector<std::string> bypassed = {};        ///< ids of effects that are left out

    bool operator==(const ExportSettings&) const = default;
};

struct ExportResult {
    enum class Outcome { Done, Cancelled, Failed };

    Outcome outcome = Outcome::Done;
    std::string message; ///< for a person; when done, what differs from the edit, mostly nothing

    bool operator==(const ExportResult&) const = default;
};

/** Null when no preset has the extension of the path. */
const ExportPreset* findExportPreset(const std::vector<ExportPreset>& presets, std::string_view path);

} // namespace workbench
