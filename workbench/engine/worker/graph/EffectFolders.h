#pragma once

#include <string>

namespace workbench
{

/**
 * Has the framework look for plug-ins of effects in this folder as well, before all others. For the time before it is
 * started and before there are other threads: the framework reads the environment.
 */
void addEffectFolder(const std::string& folder);

/** The folder of the effects that belong to this program; it may be missing. */
std::string ownEffectFolder();

} // namespace workbench
