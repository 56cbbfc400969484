#pragma once

#include "workbench/engine/protocol/ProbeResults.h"

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench
{

/** The first argument with which a program calls runEffectProbe(). */
inline constexpr std::string_view kEffectProbeArgument = "--probe-effect";

/**
 * Tries an effect in a process of its own, where it can crash or hang without harm: the running program, started again
 * with kEffectProbeArgument. Blocks until the answer is there, for `timeLimit` at the longest; any thread.
 */
EffectProbeResult probeEffect(const std::string& service,
                              const std::vector<std::pair<std::string, std::string>>& properties = {},
                              std::chrono::milliseconds timeLimit = std::chrono::milliseconds(5000));

/**
 * The other side of it, called first thing in main() when argv[1] is kEffectProbeArgument; returns the exit status.
 * `arguments` are those after it: the service, then "name=value" for each property.
 */
int runEffectProbe(const std::vector<std::string>& arguments);

} // namespace workbench
