#include "workbench/app/cues/CueCommands.h"

#include "workbench/app/cues/CuePlacement.h"
#include "workbench/app/cues/LastCueColour.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/model/Ids.h"

namespace workbench
{

using oribund::Cue;
using oribund::IdStamp;

CueCommands::CueCommands(Workspace& workspace)
    : workspace_(workspace)
{
}

std::map<Command, ActionTable::Handler> CueCommands::handlers()
{
    const auto onCurrent = [this](void (CueCommands::*act)(const IdStamp&)) {
        return [this, act] { withCurrent([this, act](const IdStamp& cue) { (this->*act)(cue); }); };
    };
    return {
        {Command::AddCue, [this] { add(workspace_.vob().getCurrentTime()); }},
        {Command::PreviousCue, [this] { goToPrevious(); }},
        {Command::NextCue, [this] { goToNext(); }},
        {Command::RenameCue, onCurrent(&CueCommands::askForName)},
        {Command::CueColour, [] {}}, // what is in its menu does it
        {Command::DescribeCue, onCurrent(&CueCommands::describe)},
        {Command::RemoveCue, onCurrent(&CueCommands::remove)},
    };
}

const Cue* CueCommands::current() const
{
    return cueInFrame(workspace_.vob(), workspace_.vob().currentFrame());
}

void CueCommands::withCurrent(const std::function<void(const IdStamp& cue)>& act)
{
    const Cue* const cue = current();
    if (!cue)
        return say("There is no cue at the current time.");
    act(IdStamp(cue->id));
}

void CueCommands::sayIfRefused(const EditOutcome& outcome)
{
    if (!outcome)
        say(outcome.refused);
}

// To places

void CueCommands::add(double editTime)
{
    const ModelVob& vob = workspace_.vob();
    const int frame = vob.frameOf(editTime);
    // Two in one frame could not be told apart, whatever lies between their times.
    if (cueInFrame(vob, frame))
        return say(refusal::kCueThere);
    Cue cue;
    cue.time = vob.timeOf(frame);
    cue.name = freeCueName(workspace_.edit().getCues());
    cue.colour = lastCueColour();
    const EditOutcome outcome = workspace_.editor().addCue(cue);
    sayIfRefused(outcome);
    if (outcome)
        workspace_.cue().set(stampOf(outcome.object));
}

void CueCommands::goToPrevious()
{
    goTo(previousCue(workspace_.vob(), workspace_.vob().currentFrame()));
}

void CueCommands::goToNext()
{
    goTo(nextCue(workspace_.vob(), workspace_.vob().currentFrame()));
}

void CueCommands::goTo(const Cue* cue)
{
    if (cue)
        workspace_.goToCue(*cue);
    else if (workspace_.edit().getCues().empty())
        say("There are no cues.");
}

// On a cue

void CueCommands::askForName(const IdStamp& id)
{
    const Cue* const cue = workspace_.edit().getCues().find(id);
    if (workspace_.edit().isReadOnly())
        return say(refusal::kReadOnly);
    if (cue && nameWanted)
        nameWanted(Cue(*cue));
}

void CueCommands::change(const IdStamp& id, const std::function<void(Cue& cue)>& alter)
{
    const Cue* const before = workspace_.edit().getCues().find(id);
    if (!before)
        return say(refusal::kNoCue);
    Cue cue = *before;
    alter(cue);
    if (cue != *before) // otherwise there would be a step that does nothing
        sayIfRefused(workspace_.editor().changeCue(cue));
}

void CueCommands::rename(const IdStamp& id, const oribund::WString& name)
{
    if (!name.empty())
        change(id, [&name](Cue& cue) { cue.name = name; });
}

void CueCommands::recolour(const IdStamp& id, const oribund::Colour& colour)
{
    rememberCueColour(colour);
    change(id, [&colour](Cue& cue) { cue.colour = colour; });
}

void CueCommands::describe(const IdStamp& id)
{
    const Cue* const cue = workspace_.edit().getCues().find(id);
    workspace_.cue().set(id);
    if (cue && descriptionWanted)
        descriptionWanted(Cue(*cue));
}

void CueCommands::remove(const IdStamp& id)
{
    sayIfRefused(workspace_.editor().removeCue(id));
}

} // namespace workbench
