#include "workbench/app/cues/CueMenu.h"

#include "oribund/cues/CueColours.h"
#include "oribund/host/toolkit/core/Menu.h"
#include "workbench/app/cues/CueCommands.h"
#include "workbench/app/cues/CuePlacement.h"
#include "workbench/app/session/Workspace.h"

namespace workbench
{

using oribund::Cue;
using oribund::Menu;
using oribund::UIString;

namespace
{

void fillColours(Menu& menu, CueCommands& cues, const Cue& cue)
{
    for (const oribund::CueColour& one : oribund::cueColours()) {
        oribund::MenuItem& item =
            menu.addItem(UIString(one.name), [&cues, id = cue.id, &one] { cues.recolour(id, one.colour); });
        item.checked = one.colour == cue.colour;
    }
}

void fillFor(Menu& menu, CueCommands& cues, Workspace& workspace, const Cue& cue)
{
    menu.addHeading(cue.name.empty() ? UIString(L"Cue") : UIString(cue.name));
    menu.addItem(UIString(L"Go to this cue"), [&workspace, cue] { workspace.goToCue(cue); });
    menu.addItem(UIString(L"Rename cue\u2026"), [&cues, id = cue.id] { cues.askForName(id); });
    fillColours(menu.addSubmenu(UIString(L"Colour")), cues, cue);
    menu.addItem(UIString(L"Describe cue"), [&cues, id = cue.id] { cues.describe(id); });
    menu.addItem(UIString(L"Delete cue"), [&cues, id = cue.id] { cues.remove(id); });
}

} // namespace

void fillCueMenu(Menu& menu, CueCommands& cues, Workspace& workspace, double editTime)
{
    const ModelVob& vob = workspace.vob();
    if (const Cue* const cue = cueInFrame(vob, vob.frameOf(editTime)))
        fillFor(menu, cues, workspace, *cue);
    else
        menu.addItem(UIString(L"Add cue here"), [&cues, editTime] { cues.add(editTime); });
    menu.addSeparator();
    menu.addItem(UIString(L"Previous cue"), [&cues] { cues.goToPrevious(); }).enabled =
        previousCue(vob, vob.currentFrame()) != nullptr;
    menu.addItem(UIString(L"Next cue"), [&cues] { cues.goToNext(); }).enabled =
        nextCue(vob, vob.currentFrame()) != nullptr;
}

} // namespace workbench
