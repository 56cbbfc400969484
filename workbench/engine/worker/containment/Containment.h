#pragma once

#include "workbench/engine/protocol/ContainmentRules.h"

namespace workbench
{

/**
 * Takes from this process, for good, what it does not need for its work: files, network, other programs and processes.
 * What a plug-in or a damaged file makes it do then stays without effect.
 *
 * Called once, by the only thread of the process; every thread that is started later is bound by it. Descriptors that
 * are open stay usable. What this system does not offer is left out and told; nothing fails. What is refused comes back
 * from the system as an error (EACCES, EPERM, ENOSYS), so that libraries go on without it.
 */
ContainmentReport contain(const ContainmentRules& rules);

} // namespace workbench
