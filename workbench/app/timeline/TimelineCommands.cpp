#include "workbench/app/timeline/TimelineCommands.h"

#include "workbench/app/session/ClipPlacement.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/app/timeline/TimeCode.h"

#include <algorithm>
#include <vector>

namespace workbench
{

TimelineCommands::TimelineCommands(Workspace& workspace)
    : workspace_(workspace)
{
}

std::map<Command, ActionTable::Handler> TimelineCommands::handlers()
{
    return {
        {Command::Undo, [this] { workspace_.edit().undoStack().undo(); }},
        {Command::Redo, [this] { workspace_.edit().undoStack().redo(); }},
        {Command::Split, [this] { split(); }},
        {Command::Remove, [this] { removeSelected(); }},
        {Command::SelectNext, [this] { selectNext(1); }},
        {Command::SelectPrevious, [this] { selectNext(-1); }},
        {Command::Play, [this] { togglePlay(); }},
        {Command::StepBack, [this] { stepBy(-1); }},
        {Command::StepForward, [this] { stepBy(1); }},
        {Command::SecondBack, [this] { stepBy(-framesPerSecond(workspace_.edit().format())); }},
        {Command::SecondForward, [this] { stepBy(framesPerSecond(workspace_.edit().format())); }},
        {Command::ToStart, [this] { goTo(0); }},
        {Command::ToEnd, [this] { goTo(workspace_.edit().timeline().endFrame() - 1); }},
        {Command::PreviousCut, [this] { goTo(previousCut(workspace_.edit(), workspace_.vob().currentFrame())); }},
        {Command::NextCut, [this] { goTo(nextCut(workspace_.edit(), workspace_.vob().currentFrame())); }},
    };
}

void TimelineCommands::goTo(int frame)
{
    workspace_.vob().setCurrentTime(workspace_.vob().timeOf(frame));
}

void TimelineCommands::stepBy(int frames)
{
    workspace_.vob().stopPlay();
    goTo(workspace_.vob().currentFrame() + frames);
}

void TimelineCommands::togglePlay()
{
    ModelVob& vob = workspace_.vob();
    if (vob.isPlaying())
        vob.stopPlay();
    else if (workspace_.edit().timeline().endFrame() > 0)
        vob.startPlay();
}

void TimelineCommands::split()
{
    const int frame = workspace_.vob().currentFrame();
    const Segment* segment = workspace_.edit().timeline().findSegment(workspace_.selection().get());
    if (!segment || frame <= segment->data.start || frame >= segment->data.end())
        segment = topSegmentAt(workspace_.edit(), frame);
    if (!segment)
        return say("There is no segment at the current time.");
    const EditOutcome outcome = workspace_.editor().splitSegment(segment->id(), frame);
    if (outcome)
        workspace_.selection().set(outcome.object);
    else
        say(outcome.refused);
}

void TimelineCommands::removeSelected()
{
    if (!workspace_.edit().timeline().findSegment(workspace_.selection().get()))
        return say("Select a segment to remove.");
    if (const EditOutcome outcome = workspace_.editor().removeSegment(workspace_.selection().get()); !outcome)
        say(outcome.refused);
}

void TimelineCommands::selectNext(int by)
{
    std::vector<const Segment*> segments;
    for (const auto& track : workspace_.edit().timeline().tracks())
        segments.insert(segments.end(), track->segments.begin(), track->segments.end());
    if (segments.empty())
        return;
    const auto selected = std::find_if(segments.begin(), segments.end(), [this](const Segment* segment) {
        return segment->id() == workspace_.selection().get();
    });
    const auto count = static_cast<std::ptrdiff_t>(segments.size());
    const std::ptrdiff_t from = selected == segments.end() ? (by > 0 ? -1 : count) : selected - segments.begin();
    const Segment& next = *segments[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from + by, 0, count - 1))];
    workspace_.selection().set(next.id());
    goTo(next.data.start);
}

} // namespace workbench
