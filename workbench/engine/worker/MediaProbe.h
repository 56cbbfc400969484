#pragma once

#include "workbench/engine/protocol/ProbeResults.h"

#include <string>

namespace workbench
{

class MltSession;

/** Opens a media file and reads what is in it. Blocks while the file is read; any thread. */
MediaProbeResult probeMedia(MltSession& session, const std::string& path);

} // namespace workbench
