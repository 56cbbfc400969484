#pragma once

#include "workbench/model/MediaInfo.h"

#include <optional>
#include <string>

namespace workbench
{

class MltSession;

struct MediaProbeResult {
    std::optional<MediaInfo> info; ///< empty when the file cannot be used
    std::string problem;           ///< for a person: why not
    std::string warning;           ///< for a person: usable, but something is amiss, such as a file cut short
};

/** Opens a media file and reads what is in it. Blocks while the file is read; any thread. */
MediaProbeResult probeMedia(MltSession& session, const std::string& path);

} // namespace workbench
