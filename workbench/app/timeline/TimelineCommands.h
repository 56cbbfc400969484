#pragma once

#include "workbench/app/session/ActionTable.h"

#include <map>

namespace workbench
{

class Workspace;

/** The commands that play and walk through the edit, cut it up and take it back. */
class TimelineCommands
{
public:
    /** The workspace outlives this. */
    explicit TimelineCommands(Workspace& workspace);

    std::map<Command, ActionTable::Handler> handlers();

private:
    void stepBy(int frames);
    void goTo(int frame);
    void togglePlay();
    void split();
    void removeSelected();
    void selectNext(int by);

    Workspace& workspace_;
};

} // namespace workbench
