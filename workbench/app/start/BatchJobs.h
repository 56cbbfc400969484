#pragma once

#include "workbench/app/start/CommandLine.h"

#include <memory>

namespace workbench
{

class Workspace;

/** Fills the workspace with what the command line names: a project, or media one after the other. False, and said
    why, when none of it could be used. */
bool openAll(Workspace& workspace, const CommandLine& commandLine);

// What the program does without a window. Both yield the exit status.
int exportFile(Workspace& workspace, const CommandLine& commandLine);
int listEffects(const Workspace& workspace);

} // namespace workbench
