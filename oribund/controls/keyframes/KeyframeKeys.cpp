#include "oribund/controls/keyframes/KeyframeKeys.h"

#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/host/toolkit/core/Event.h"

namespace oribund
{

namespace
{

enum class Action { None, Walk, Move, SelectAll, Remove, Deselect };

Action actionOf(const Event& event)
{
    if (event.code != EventCode::KeyPress)
        return Action::None;
    const unsigned held = event.modifiers & (Event::kCtrl | Event::kShift | Event::kAlt | Event::kMeta);
    const bool sideways = event.key == Key::Left || event.key == Key::Right;
    if (held == Event::kCtrl && sideways)
        return Action::Walk;
    if (held == Event::kAlt && sideways)
        return Action::Move;
    if (held == Event::kCtrl && event.key == Key::Character && event.text == L"a")
        return Action::SelectAll;
    if (held == 0 && (event.key == Key::Delete || event.key == Key::Backspace))
        return Action::Remove;
    return held == 0 && event.key == Key::Escape ? Action::Deselect : Action::None;
}

} // namespace

bool usesKeyframeKey(const KeyframeCommands& commands, const Event& press)
{
    const Action action = actionOf(press);
    return action != Action::None && (action != Action::Deselect || commands.countSelected() > 0);
}

bool runKeyframeKey(const KeyframeCommands& commands, const Event& event)
{
    if (!usesKeyframeKey(commands, event))
        return false;
    const bool forward = event.key == Key::Right;
    switch (actionOf(event)) {
    case Action::None:
        return false;
    case Action::Walk:
        commands.goToAdjacent(forward);
        return true;
    case Action::Move:
        commands.moveSelected(forward ? 1 : -1);
        return true;
    case Action::SelectAll:
        commands.selectAll(true);
        return true;
    case Action::Remove:
        // Taken even when nothing is selected: it must not go on to remove what is around the keyframes.
        commands.removeSelected();
        return true;
    case Action::Deselect:
        commands.selectAll(false);
        return true;
    }
    return false;
}

} // namespace oribund
