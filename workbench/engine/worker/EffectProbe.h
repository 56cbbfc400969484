#pragma once

#include "workbench/engine/protocol/ProbeResults.h"

#include <string>
#include <utility>
#include <vector>

namespace workbench
{

class MltSession;

/** Renders a few frames with an effect on them. It may end the process, or never return; whoever asked notices. */
EffectProbeResult tryEffect(MltSession& session, const std::string& service,
                            const std::vector<std::pair<std::string, std::string>>& properties);

} // namespace workbench
