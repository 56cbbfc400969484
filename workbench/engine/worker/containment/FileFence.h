#pragma once

#include <string>

namespace workbench
{

struct ContainmentRules;

/**
 * Leaves to this thread, and to those that it starts, only the files of the rules and of the system's places. Needs a
 * kernel with Landlock, and PR_SET_NO_NEW_PRIVS. Returns why it is not or only in part in force; empty when it is.
 */
std::string fenceFiles(const ContainmentRules& rules);

} // namespace workbench
