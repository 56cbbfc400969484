#pragma once

#include <QMenu>

namespace workbench
{

class CueCommands;

/** The colours for the cue at the current time, of which that of the cue is checked. */
class CueColourMenu final : public QMenu
{
public:
    /** The commands outlive the menu's use. */
    CueColourMenu(CueCommands& cues, QWidget* parent);

private:
    void showCurrent();

    CueCommands& cues_;
};

} // namespace workbench
