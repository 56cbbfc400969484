#pragma once

#include "skin/theme/Glyphs.h"

#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>
#include <map>
#include <optional>

class QAction;
class QMenuBar;
class QWidget;

namespace workbench
{

/** What the user can ask the window for. */
enum class Command {
    New,
    Open,
    Save,
    SaveAs,
    FindMedia,
    Export,
    Quit,
    Undo,
    Redo,
    Split,
    Delete, ///< by what has the keyboard
    Remove,
    SelectNext,
    SelectPrevious,
    Play,
    StepBack,
    StepForward,
    SecondBack,
    SecondForward,
    ToStart,
    ToEnd,
    PreviousCut,
    NextCut,
    AddCue,
    PreviousCue,
    NextCue,
    RenameCue,
    CueColour, ///< a submenu
    DescribeCue,
    RemoveCue,
    PreviousKeyframe,
    NextKeyframe,
    AddKeyframes,
    RemoveKeyframes,
    SelectKeyframes,
    DeselectKeyframes,
    CopyKeyframes,
    PasteKeyframes,
    KeyframesEarlier,
    KeyframesLater,
    ZoomIn,
    ZoomOut,
    ZoomAll,
    ShowHandles, ///< in the picture; on or off
    FindEffect,
    RetryEffects,
};

/** Every command with its text, keys and icon: what stands in the menus is all that there is. */
class ActionTable
{
public:
    using Handler = std::function<void()>;

    /** Makes the actions of the commands for which there is a handler. They belong to the window. */
    ActionTable(QWidget& window, const std::map<Command, Handler>& handlers);

    QAction& action(Command command) const { return *actions_.at(command); }

    void fillMenus(QMenuBar& bar) const;

private:
    std::map<Command, QAction*> actions_;
};

} // namespace workbench
