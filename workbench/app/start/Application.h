#pragma once

#include "workbench/app/start/CommandLine.h"

namespace workbench
{

/** Does what the command line asks for and returns the exit status: 0, or 1 when it failed. */
int runApplication(const CommandLine& commandLine, int& argc, char** argv);

} // namespace workbench
