#pragma once

namespace oribund
{
class Menu;
}

namespace workbench
{

class CueCommands;
class Workspace;

/** What can be done with the cue in the frame of that time or, where there is none, about one. Both outlive the
 * menu. */
void fillCueMenu(oribund::Menu& menu, CueCommands& cues, Workspace& workspace, double editTime);

} // namespace workbench
