#pragma once

#include <string>

namespace workbench
{

struct ContainmentRules;

/**
 * Refuses to every thread of this process the system calls that lead out of it: network, other programs, processes of
 * its own, other processes, and whatever changes the system. Needs PR_SET_NO_NEW_PRIVS. Returns why it is not in force;
 * empty when it is.
 */
std::string fenceCalls(const ContainmentRules& rules);

} // namespace workbench
