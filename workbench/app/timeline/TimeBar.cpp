#include "workbench/app/timeline/TimeBar.h"

#include "oribund/cues/CueDrawing.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/toolkit/core/Event.h"
#include "workbench/app/cues/CueCommands.h"
#include "workbench/app/cues/CueMenu.h"

#include <algorithm>
#include <utility>

namespace workbench
{

using oribund::Event;
using oribund::NumRange;
using oribund::ThermHit;

namespace
{
oribund::therm::InitArgs argsFor(const oribund::Glob::InitArgs& place, Workspace& workspace)
{
    oribund::therm::InitArgs args(place.width, place.height, place.canvas);
    args.cookie = workspace.edit().getCookie();
    args.vob = &workspace.vob();
    return args;
}
} // namespace

TimeBar::TimeBar(const oribund::Glob::InitArgs& args, Workspace& workspace, CueCommands& cues)
    : therm(argsFor(args, workspace))
    , workspace_(workspace)
    , cues_(cues)
    , replacedCallback_(this, &TimeBar::handleReplaced)
    , viewCallback_(this, &TimeBar::handleView)
{
    setAllowZoom(true);
    setAccessibleName(oribund::UIString(L"Time in the whole edit"));
    replacedCallback_.attach(workspace_.replaced());
    viewCallback_.attach(workspace_.vob().viewRangeServer().notifier());
    showSpan();
}

// In step with edit and timeline

void TimeBar::showSpan()
{
    const NumRange<double> view = workspace_.vob().getViewRange();
    set(0.0, workspace_.edit().getEndTime(), view.start(), view.end());
}

int TimeBar::handleReplaced(const EditReplaced&)
{
    setVob(&workspace_.vob());
    showSpan();
    return 0;
}

int TimeBar::handleView(const oribund::ValServerEvent<NumRange<double>>& event)
{
    if (event.kind == oribund::ValEventKind::Changed)
        showSpan();
    return 0;
}

void TimeBar::handleModifications(const oribund::EditModification& modification)
{
    therm::handleModifications(modification);
    showSpan();
}

NumRange<double> TimeBar::wantedView() const
{
    const NumRange<double> asked = requestedWindow();
    // The window is the view without the room behind the edit: moved, or taken back, it has all of its length again.
    oribund::ThermGeometry before = geometry();
    before.set(before.start, before.end, viewAtPress_.start(), viewAtPress_.end());
    const bool moves = static_cast<ThermHit>(dragState()) == ThermHit::WindowBody;
    if (moves || asked == NumRange<double>(before.windowStart, before.windowEnd))
        return {asked.start(), asked.start() + viewAtPress_.length()};
    return asked;
}

bool TimeBar::handleMessageEvent(const oribund::String& message, oribund::Glob* sender)
{
    if (message.view().substr(0, resizeZoomWinMsg.view().size()) == resizeZoomWinMsg.view()) {
        workspace_.vob().setViewRange(wantedView());
        return true;
    }
    if (message == showCueMsg) {
        workspace_.cue().set(shownCue().id);
        return true;
    }
    return therm::handleMessageEvent(message, sender);
}

void TimeBar::drawCueAt(oribund::CanvasRenderer& renderer, int x, const oribund::Colour& colour)
{
    // As wide as a click near one reaches: alone on the bar, they need not be small.
    drawCue(renderer, {x, 0}, colour, colour.scaled(0.3), oribund::eCueSizeLarge);
}

// Pointer, keys and menu

double TimeBar::timeAt(int x) const
{
    const oribund::ThermGeometry shown = geometry();
    const oribund::Cue cue = findCueNearestPos(getEdit(), x, shown.width, cueTolerance(), {shown.start, shown.end});
    return cue.valid() ? cue.time : constrainTime(shown.x2f(x));
}

oribund::MouseCursor TimeBar::contextCursor(const oribund::XY<int>& local) const
{
    switch (static_cast<ThermHit>(dragState() != 0 ? dragState() : doHitTest(local))) {
    case ThermHit::LeftEdge:
    case ThermHit::RightEdge:
        return oribund::MouseCursor::ResizeHorizontal;
    case ThermHit::WindowBody:
        return oribund::MouseCursor::Move;
    default:
        return oribund::MouseCursor::Arrow;
    }
}

bool TimeBar::handleMouseEvent(const Event& event)
{
    if (event.isPress(oribund::MouseButton::Left) && dragState() == 0)
        viewAtPress_ = workspace_.vob().getViewRange();
    return therm::handleMouseEvent(event);
}

bool TimeBar::usesKey(const Event& press) const
{
    // A longer step is the window's, here as everywhere.
    const bool longStep =
        press.has(Event::kShift) && (press.key == oribund::Key::Left || press.key == oribund::Key::Right);
    return !longStep && therm::usesKey(press);
}

bool TimeBar::openCueMenu(double editTime, const oribund::XY<int>& at)
{
    menuTime_ = editTime;
    const bool opened = openMenu(at);
    menuTime_.reset();
    return opened;
}

void TimeBar::reviewMenu(const Event* event)
{
    const double here = event && event->isMouse() ? timeAt(event->position.x) : getTime(oribund::eExact);
    fillCueMenu(editMenu(), cues_, workspace_, menuTime_.value_or(here));
}

} // namespace workbench
