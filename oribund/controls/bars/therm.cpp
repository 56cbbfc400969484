#include "oribund/controls/bars/therm.h"

#include "oribund/controls/binding/EditTime.h"
#include "oribund/cues/CueDescriptionPanel.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

therm::InitArgs argsOf(const Cookie& cookie, double start, double end, Vob* vob, Canvas* canvas)
{
    therm::InitArgs args(0, 0, canvas);
    args.cookie = cookie;
    args.start = start;
    args.end = end;
    args.vob = vob;
    return args;
}

} // namespace

const String therm::showCueMsg("showCue");

therm::therm(const InitArgs& args)
    : ThermBase(args)
    , VobClient(args.vob)
    , cookie_(args.cookie)
    , flags_(args.flags)
{
    set(args.start, args.end, args.start, args.end);
}

therm::therm(const Cookie& cookie, double start, double end, Vob* vob, Canvas* canvas)
    : therm(argsOf(cookie, start, end, vob, canvas))
{
}

therm::~therm()
{
    finishDrag();
}

void therm::setVob(Vob* vob)
{
    const GlobRef<therm> self(this);
    finishDrag();
    if (!self)
        return;
    popup_.reset();
    VobClient::setVob(vob);
    changed(GlobChange::kContents | GlobChange::kState);
}

double therm::getTime(eAccuracy accuracy) const
{
    if (!getEdit())
        return 0.0;
    const double time = getVob()->getCurrentTime();
    return accuracy == eExact ? time : frameRound(time, getEdit());
}

void therm::setTime(double editTime)
{
    if (getEdit() && !std::isnan(editTime))
        getVob()->setCurrentTime(editTime);
}

double therm::leastWindow() const
{
    return getEdit() ? std::min(timeStep(), geometry().end - geometry().start) : ThermBase::leastWindow();
}

double therm::constrainTime(double editTime) const
{
    return ThermBase::constrainTime(frameRound(editTime, getEdit()));
}

double therm::timeStep() const
{
    const EditPtr edit = getEdit();
    return edit ? edit->getCelResolution() : 0.0;
}

Cue therm::cueAt(int x) const
{
    const ThermGeometry shown = geometry();
    return findCueNearestPos(getEdit(), x, shown.width, cueTolerance(), {shown.start, shown.end});
}

void therm::jumpToPos(double editTime)
{
    if (!getEdit() || std::isnan(editTime))
        return;
    if (std::isinf(editTime))
        editTime = constrainTime(editTime);
    const GlobRef<therm> self(this);
    const Cue cue = cueAt(geometry().f2xi(editTime));
    if (cue.time != kNoCueTime) {
        setTime(cue.time);
        if (self && !minimalMode())
            showCuePanel(cue);
        return;
    }
    constexpr double kOutside = 1e-6;
    const NumRange<double> range = getVob()->getViewRange();
    if (editTime < range.start() - kOutside || editTime > range.end() + kOutside) {
        const double half = range.length() / 2.0;
        getVob()->setViewRange({editTime - half, editTime + half});
    }
    if (self)
        setTime(constrainTime(editTime));
}

void therm::showCuePanel(const Cue& cue)
{
    shownCue_ = cue;
    popup_ = makePopup(cue);
    if (popup_ && placePopup(cue.time)) {
        popup_->open();
        return;
    }
    popup_.reset();
    sendMsg(showCueMsg);
}

/** Below the bar or, where there is more room, above it, as much of it as fits. False where that is too little. */
bool therm::placePopup(double editTime)
{
    const int top = toCanvas({0, 0}).y;
    const int bottom = top + getHeight();
    const int below = canvas()->size().y - bottom;
    const bool isBelow = popup_->getHeight() <= below || below >= top;
    const int room = isBelow ? below : top;
    if (room < std::min(popup_->getHeight(), 2 * UifStd::getRowHeight()))
        return false;
    const int height = std::min(popup_->getHeight(), room);
    popup_->resize({popup_->getWidth(), height});
    const int left = std::min(toCanvas({f2xi(editTime), 0}).x, canvas()->size().x - popup_->getWidth());
    popup_->setPosition({std::max(0, left), isBelow ? bottom : top - height});
    return true;
}

std::unique_ptr<Glob> therm::makePopup(const Cue& cue)
{
    CueDescriptionPanel::InitArgs args(0, 0, canvas());
    args.vob = getVob();
    args.cue = cue.id;
    args.width = static_cast<unsigned short>(10 * UifStd::getRowHeight());
    args.height = static_cast<unsigned short>(static_cast<int>(args.attributes.size()) * UifStd::getRowHeight());
    return std::make_unique<CueDescriptionPanel>(args);
}

void therm::handleMouseLeft(const Event& event)
{
    jumpToPos(x2f(event.position.x)); // to a cue there
}

void therm::startTimeChangeSeries()
{
    if (!getEdit())
        return;
    const PlayState dragged = flags_ & InitArgs::kEveryFrame ? PlayState::Held : PlayState::Scrub;
    beginScrub(getVob(), flags_ & InitArgs::kQuiet ? PlayState::Idle : dragged);
    if (flags_ & (InitArgs::kEveryFrame | InitArgs::kShowAtOnce))
        setTime(getTime(eExact));
}

void therm::stopTimeChangeSeries()
{
    endScrub(getVob());
}

bool therm::zoomBy(double factor)
{
    if (!allowZoom() || !getEdit())
        return false;
    // At the floor a step inwards is left out as a whole: so many steps back lead to the same window as before.
    const double least = leastWindow();
    const double length = getVob()->getViewRange().length() * factor;
    if (factor > 1.0 || length >= least)
        setWindow(geometry().zoomedAbout(getTime(eExact), std::max(length, least)));
    return true;
}

bool therm::usesKey(const Event& press) const
{
    return (popup_ && press.isKeyPress(Key::Escape)) || ThermBase::usesKey(press);
}

bool therm::handleKeyEvent(const Event& event)
{
    if (!popup_ || dragState() != 0 || !event.isKeyPress(Key::Escape))
        return ThermBase::handleKeyEvent(event);
    popup_.reset();
    return true;
}

bool therm::handleMouseEvent(const Event& event)
{
    constexpr double kIn = 0.8;
    constexpr double kOut = 1.25;
    if (event.code == EventCode::MouseWheel && allowZoom() && dragState() == 0 && canInteract()) {
        if (wheelRest_ * event.wheel < 0.0)
            wheelRest_ = 0.0; // the other way counts from here
        wheelRest_ += event.wheel;
        const double whole = std::trunc(wheelRest_);
        wheelRest_ -= whole;
        // A fine wheel's fraction of a notch is taken, and waits for the rest.
        return whole == 0.0 || zoomBy(whole >= 1.0 ? kIn : kOut);
    }
    if (event.code == EventCode::MousePress || event.code == EventCode::MouseDoubleClick)
        popup_.reset();
    pointerX_ = event.code == EventCode::MouseLeave ? -1 : event.position.x;
    return ThermBase::handleMouseEvent(event);
}

WString therm::valueText() const
{
    return getCueTimecode(getTime(eExact), getEdit());
}

UIString therm::tooltip() const
{
    if (pointerX_ >= 0 && !minimalMode()) {
        if (const Cue cue = cueAt(pointerX_); cue.valid())
            return UIString(getCueTooltip(cue, getEdit()));
    }
    return ThermBase::tooltip();
}

void therm::drawContents(CanvasRenderer& renderer)
{
    if (!minimalMode()) {
        for (const Section& section : sections())
            drawSection(renderer, section);
    }
    ThermBase::drawContents(renderer);
}

void therm::drawSection(CanvasRenderer& renderer, const Section& section)
{
    if (section.kind == Section::Kind::Marked) {
        drawMarkedRegion(renderer, section.times.start(), section.times.end());
        return;
    }
    // A strip along an edge: cues hang from the upper one, reports lie on the lower one, the urgent ones thicker.
    const ThermGeometry shown = geometry();
    const double height = getHeight();
    Kt::Box<double> strip{shown.f2x(section.times.start()), 0.0, shown.f2xClipped(section.times.end()), 3.0};
    if (section.kind != Section::Kind::RangedCue) {
        strip.top = height - (section.kind == Section::Kind::QualityEvent ? 4.0 : 2.0);
        strip.bottom = height;
    }
    renderer.fillRect(strip, section.colour);
}

void therm::drawMarks(CanvasRenderer& renderer)
{
    // The end of the edit's content, where the bar shows time beyond it.
    const EditPtr edit = getEdit();
    const ThermGeometry shown = geometry();
    if (edit && edit->getEndTime() > shown.start && edit->getEndTime() < shown.end)
        drawMarkAt(renderer, shown.f2xi(edit->getEndTime()));
}

/** `use` does not change the edit. */
template <class Use>
void therm::forEachCueShown(Use use) const
{
    const EditPtr edit = getEdit();
    if (!edit)
        return;
    const ThermGeometry shown = geometry();
    for (const Cue& cue : edit->getCues()) {
        if ((cue.flags & Cue::kVisible) != 0 && cue.time >= shown.start && cue.time <= shown.end)
            use(cue);
    }
}

void therm::drawCues(CanvasRenderer& renderer)
{
    const ThermGeometry shown = geometry();
    // Of those at one pixel the last one would hide the others.
    std::vector<const Cue*> atPixels(static_cast<std::size_t>(shown.width) + 1);
    forEachCueShown([&](const Cue& cue) {
        atPixels[static_cast<std::size_t>(std::clamp(shown.f2xi(cue.time), 0, shown.width))] = &cue;
    });
    for (std::size_t x = 0; x < atPixels.size(); ++x) {
        if (atPixels[x])
            drawCueAt(renderer, static_cast<int>(x), atPixels[x]->colour);
    }
}

std::vector<Cue> therm::cuesShown() const
{
    std::vector<Cue> cues;
    forEachCueShown([&](const Cue& cue) { cues.push_back(cue); });
    return cues;
}

int therm::accessiblePartCount() const
{
    return static_cast<int>(cuesShown().size());
}

void therm::describePart(int part, AccessibleDescription& description) const
{
    const std::vector<Cue> cues = cuesShown();
    if (static_cast<std::size_t>(part) >= cues.size())
        return;
    const Cue& cue = cues[static_cast<std::size_t>(part)];
    const int x = geometry().f2xi(cue.time);
    description.role = AccessibleRole::Cue;
    description.name = UIString(getCueTooltip(cue, getEdit()));
    description.value = getCueTimecode(cue.time, getEdit());
    description.action = AccessibleAction::Press;
    description.box = {x - cueTolerance(), 0, x + cueTolerance() + 1, getHeight()};
}

int therm::accessiblePartAt(const XY<int>& local) const
{
    const Cue wanted = cueAt(local.x);
    const std::vector<Cue> cues = cuesShown();
    const auto found = std::find_if(cues.begin(), cues.end(), [&](const Cue& cue) { return cue.id == wanted.id; });
    return wanted.valid() && found != cues.end() ? static_cast<int>(found - cues.begin()) : kNoPart;
}

bool therm::accessibleActivate(int part)
{
    const std::vector<Cue> cues = cuesShown();
    if (!canInteract() || static_cast<std::size_t>(part) >= cues.size())
        return false;
    setTime(cues[static_cast<std::size_t>(part)].time);
    return true;
}

void therm::handleCurrentTimeChange()
{
    currentTimeMoved();
}

void therm::handleModifications(const EditModification&)
{
    const EditPtr edit = getEdit();
    if (popup_ && !(edit && edit->getCues().find(shownCue_.id)))
        popup_.reset();
    changed(GlobChange::kContents);
}

void therm::handleVobGone()
{
    setVob(nullptr);
}

void therm::handleHidden()
{
    popup_.reset();
}

} // namespace oribund
