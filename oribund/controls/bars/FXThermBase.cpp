#include "oribund/controls/bars/FXThermBase.h"

#include "oribund/controls/bars/KeyframeDrag.h"
#include "oribund/controls/bars/ThermMarks.h"
#include "oribund/controls/binding/EditTime.h"
#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/controls/keyframes/KeyframeKeys.h"
#include "oribund/controls/keyframes/KeyframeText.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobPeer.h"
#include "oribund/host/toolkit/core/Menu.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace oribund
{

const String FXThermBase::timeDragEndedMsg("timeDragEnded");

FXThermBase::FXThermBase(const InitArgs& args)
    : ThermBase(args)
    , CompoundEffectMonitorClient(nullptr)
    , VobClient(args.vob)
    , significant_(*this)
{
    setAccessibleName(UIString(TextIds::kEffectTime));
    setTrackID(args.track);
}

FXThermBase::~FXThermBase()
{
    finishDrag();
}

// What it shows

void FXThermBase::setVob(Vob* vob)
{
    bind(vob, track_);
}

void FXThermBase::setTrackID(const IdStamp& track)
{
    bind(getVob(), track); // the edit may be another one
}

void FXThermBase::bind(Vob* vob, const IdStamp& track)
{
    const GlobRef<FXThermBase> self(this);
    finishDrag();
    if (!self)
        return;
    track_ = track;
    VobClient::setVob(vob);
    CompoundEffectMonitor* const monitor = commands().monitor();
    setMonitor(monitor);
    significant_.registerWith(monitor ? &monitor->getSignificantRegionServer() : nullptr);
    refresh();
}

KeyframeCommands FXThermBase::commands() const
{
    return {getVob(), track_};
}

void FXThermBase::handleCompoundEffectChanges(const ChangeDescription& change)
{
    // While anything is dragged, and the time moves to where other effects are, the bar stays what it is.
    const bool movedInADrag = (change.flags & ChangeDescription::kTimeOnly) != 0 && dragState() != 0;
    if ((change.flags & ChangeDescription::kSelectionOnly) == 0 && !movedInADrag)
        refresh();
    changed(PeerChange::kContents | PeerChange::kState);
}

void FXThermBase::refresh()
{
    if (CompoundEffectMonitor* const monitor = commands().monitor()) {
        keyframes_.update(*monitor, track_);
        const NumRange<double> region = monitor->getCompoundEditRegion(track_);
        if (region.length() > 0.0)
            region_ = region;
    }
    showRegion();
}

void FXThermBase::showRegion()
{
    const RedrawHold hold;
    const NumRange<double> window = significantRegion();
    const NumRange<double> wanted = zoomed_ ? window : region_;
    const ThermGeometry shown = geometry();
    const NumRange<double> span = wanted == followed_ ? NumRange<double>(shown.start, shown.end) : wanted;
    followed_ = wanted;
    set(span.start(), span.end(), window.start(), window.end());
}

void FXThermBase::setZoomed(bool zoomed)
{
    zoomed_ = zoomed;
    showRegion();
}

NumRange<double> FXThermBase::significantRegion() const
{
    const FXRange part = significant_.getServerValue();
    const bool isSet = (part.high() - part.low()).normalised > kValueTolerance;
    return isSet ? NumRange<double>(toEditTime(region_, part.low()), toEditTime(region_, part.high())) : region_;
}

void FXThermBase::setSignificantRegion(const NumRange<double>& region)
{
    if (hasTime())
        significant_.setServerValue(
            {toFXTime(region_, region_.clamp(region.start())), toFXTime(region_, region_.clamp(region.end()))});
}

bool FXThermBase::handleMessageEvent(const String& message, Glob* sender)
{
    // Asked for by this bar. It goes on to the owner, who may show more than the bar does.
    if (sender == this && message.view().starts_with(resizeZoomWinMsg.view()))
        setSignificantRegion(requestedWindow());
    return ThermBase::handleMessageEvent(message, sender);
}

// Time

double FXThermBase::constrainTime(double time) const
{
    return std::max(geometry().start, std::min(region_.end(), time));
}

double FXThermBase::getTime(eAccuracy accuracy) const
{
    if (!getEdit())
        return 0.0;
    const double now = getVob()->getCurrentTime();
    const double time = accuracy == eExact ? now : snapTime(now);
    return time >= std::max(geometry().end, region_.end()) ? region_.end() : time;
}

void FXThermBase::setTime(double time)
{
    Vob* const vob = getEdit() ? getVob() : nullptr;
    if (!vob)
        return;
    commands().stopPlay();
    vob->setCurrentTime(time);
}

double FXThermBase::timeStep() const
{
    const EditPtr edit = getEdit();
    return edit ? edit->getCelResolution() : 0.0;
}

double FXThermBase::snapTime(double time) const
{
    return frameRound(time, getEdit());
}

void FXThermBase::startTimeChangeSeries()
{
    commands().stopPlay();
    beginScrub(getVob(), PlayState::Scrub);
}

void FXThermBase::stopTimeChangeSeries()
{
    endScrub(getVob());
    sendMsg(timeDragEndedMsg); // may destroy the bar
}

void FXThermBase::handleDragEnd()
{
    refresh();
}

WString FXThermBase::valueText() const
{
    const CompoundEffectMonitor* const monitor = commands().monitor();
    if (!monitor)
        return {};
    const double now = getVob()->getCurrentTime();
    const WString text = describeKeyframes(keyframes_.at(now), now, *monitor, getEdit());
    return text.empty() ? getCueTimecode(now, getEdit()) : text;
}

// Keyframes under the pointer

std::optional<double> FXThermBase::getClosestKF(int x) const
{
    return keyframes_.closest(geometry().x2f(x));
}

std::optional<double> FXThermBase::getClosestKF(int x, int tolerance) const
{
    const auto time = getClosestKF(x);
    const double pixel = time ? geometry().f2x(*time) : -1.0;
    return pixel >= 0.0 && std::abs(pixel - x) <= tolerance ? time : std::nullopt;
}

FXThermBase::Keyframes FXThermBase::acceptedAt(const std::optional<double>& time) const
{
    Keyframes keyframes = time ? keyframes_.at(*time) : Keyframes();
    std::erase_if(keyframes, [this](const FXKeyframe& keyframe) { return !acceptsKeyframe(keyframe); });
    return keyframes;
}

UIString FXThermBase::tooltip() const
{
    const CompoundEffectMonitor* const monitor = commands().monitor();
    const auto time = monitor && pointerX_ >= 0 ? getClosestKF(pointerX_, cueTolerance()) : std::nullopt;
    return time ? UIString(describeKeyframes(keyframes_.at(*time), *time, *monitor, getEdit())) : ThermBase::tooltip();
}

MouseCursor FXThermBase::contextCursor(const XY<int>& local) const
{
    return acceptedAt(getClosestKF(local.x, cueTolerance())).empty() ? ThermBase::contextCursor(local)
                                                                     : MouseCursor::Hand;
}

bool FXThermBase::handleMouseEvent(const Event& event)
{
    pointerX_ = event.code == EventCode::MouseLeave ? -1 : event.position.x;
    const bool pressed = event.isPress(MouseButton::Left) || event.isPress(MouseButton::Right);
    if (pressed && dragState() == 0 && takesPress() && hasTime() && pressKeyframes(event))
        return true;
    return ThermBase::handleMouseEvent(event);
}

bool FXThermBase::pressKeyframes(const Event& event)
{
    if (event.has(Event::kCtrl)) {
        handleOptionPress(event);
        return true;
    }
    const auto time = getClosestKF(event.position.x, cueTolerance());
    const Keyframes keyframes = acceptedAt(time);
    if (keyframes.empty())
        return false;
    if (event.button == MouseButton::Right)
        grabKeyframes(keyframes, *time, event.position.x);
    else if (event.code == EventCode::MouseDoubleClick)
        setTime(constrainTime(*time));
    else
        commands().toggle(keyframes);
    return true;
}

void FXThermBase::grabKeyframes(const Keyframes& keyframes, double time, int x)
{
    const RedrawHold hold;
    const GlobRef<FXThermBase> self(this);
    const KeyframeCommands commands = this->commands();
    Keyframes chosen;
    bool lone = false;
    for (const FXKeyframe& keyframe : keyframes) {
        if (keyframe.selected)
            continue;
        commands.select({keyframe}, true);
        chosen.push_back(keyframe);
        lone = lone || commands.countSelectedOnTrack() == 1;
    }
    if (self)
        startDrag(std::make_shared<KeyframeDrag>(*this, x, time, std::move(chosen), lone));
}

void FXThermBase::handleOptionPress(const Event& event)
{
    const KeyframeCommands commands = this->commands();
    const Keyframes keyframes = acceptedAt(getClosestKF(event.position.x, cueTolerance()));
    const RedrawHold hold;
    commands.selectAll(false);
    commands.select(keyframes, true);
}

void FXThermBase::selectAllKeyframes(bool select)
{
    commands().selectAll(select);
}

void FXThermBase::reviewMenu(const Event*)
{
    const auto add = [this](int text, bool enabled, void (*command)(const KeyframeCommands&)) {
        const GlobRef<FXThermBase> self(this);
        MenuItem& item = editMenu().addItem(UIString(text), [self, command] {
            if (self)
                command(self->commands());
        });
        item.enabled = enabled;
    };
    const bool any = commands().countSelected() > 0;
    add(TextIds::kSelectAllKeyframes, true, [](const KeyframeCommands& commands) { commands.selectAll(true); });
    add(TextIds::kDeselectAllKeyframes, any, [](const KeyframeCommands& commands) { commands.selectAll(false); });
    add(TextIds::kRemoveSelectedKeyframes, any && commands().canEdit(),
        [](const KeyframeCommands& commands) { commands.removeSelected(); });
}

// Keys

bool FXThermBase::usesKey(const Event& press) const
{
    if (dragState() == 0 && hasTime() && canInteract()) {
        const bool toggles = press.key == Key::Space && press.isPlainKeyPress();
        if (usesKeyframeKey(commands(), press) || (toggles && !acceptedHere().empty()))
            return true;
    }
    return ThermBase::usesKey(press);
}

bool FXThermBase::handleKeyEvent(const Event& event)
{
    if (dragState() == 0 && runKeyframeKey(commands(), event))
        return true;
    if (!event.isPlainKeyPress() || event.key != Key::Space)
        return ThermBase::handleKeyEvent(event);
    commands().toggle(acceptedHere());
    return true;
}

FXThermBase::Keyframes FXThermBase::acceptedHere() const
{
    Vob* const vob = getVob();
    return vob ? acceptedAt(vob->getCurrentTime()) : Keyframes();
}

// Those who do not see it

void FXThermBase::describe(AccessibleDescription& description) const
{
    ThermBase::describe(description);
    description.multiSelectable = true;
}

int FXThermBase::accessiblePartCount() const
{
    return static_cast<int>(keyframes_.times().size());
}

void FXThermBase::describePart(int part, AccessibleDescription& description) const
{
    const CompoundEffectMonitor* const monitor = commands().monitor();
    if (!monitor || part >= accessiblePartCount())
        return;
    const double time = keyframes_.times()[static_cast<std::size_t>(part)];
    const ThermGeometry shown = geometry();
    const Keyframes keyframes = keyframes_.at(time);
    const int x = shown.f2xi(time);
    description.role = AccessibleRole::Keyframe;
    description.name = UIString(describeKeyframes(keyframes, time, *monitor, getEdit()));
    description.value = getCueTimecode(time, getEdit());
    description.box = {x - cueTolerance(), 0, x + cueTolerance() + 1, getHeight()};
    description.visible = time >= shown.start && time <= shown.end;
    description.selectable = true;
    description.selected =
        std::any_of(keyframes.begin(), keyframes.end(), [](const FXKeyframe& keyframe) { return keyframe.selected; });
    description.action = acceptedAt(time).empty() ? AccessibleAction::None : AccessibleAction::Toggle;
}

int FXThermBase::accessiblePartAt(const XY<int>& local) const
{
    const auto time = getClosestKF(local.x, cueTolerance());
    const std::vector<double>& times = keyframes_.times();
    const auto found = time ? std::lower_bound(times.begin(), times.end(), *time - kValueTolerance) : times.end();
    return found != times.end() ? static_cast<int>(found - times.begin()) : kNoPart;
}

bool FXThermBase::accessibleActivate(int part)
{
    if (!canInteract() || part < 0 || part >= accessiblePartCount())
        return false;
    const Keyframes keyframes = acceptedAt(keyframes_.times()[static_cast<std::size_t>(part)]);
    commands().toggle(keyframes);
    return !keyframes.empty();
}

} // namespace oribund
