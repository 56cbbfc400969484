#include "oribund/controls/bars/FXThermBase.h"

#include "oribund/controls/binding/EditTime.h"
#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/controls/keyframes/KeyframeText.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/edit/monitor/KeyframeChanges.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <cmath>

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
    changed(GlobChange::kContents | GlobChange::kState);
}

KeyframeCommands FXThermBase::commands() const
{
    return {getVob(), track_};
}

void FXThermBase::handleCompoundEffectChanges(const ChangeDescription& change)
{
    // In a drag the bar stays what it is, though the time plays on to where other effects are: its keyframes follow
    // their effects by themselves.
    const bool held = dragState() != 0 && !affectsEffects(change);
    const bool selectionOnly = (change.flags & ChangeDescription::kSelectionOnly) != 0;
    const bool showsOthers = !selectionOnly && !held && refresh();
    if ((change.flags & ChangeDescription::kTimeOnly) != 0 && !showsOthers)
        currentTimeMoved();
    else
        changed(GlobChange::kContents | GlobChange::kState);
}

bool FXThermBase::refresh()
{
    bool showsOthers = false;
    if (CompoundEffectMonitor* const monitor = commands().monitor()) {
        showsOthers = keyframes_.update(*monitor, track_);
        const NumRange<double> region = monitor->getCompoundEditRegion(track_);
        if (region.length() > 0.0)
            region_ = region;
    }
    showRegion();
    return showsOthers;
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

double FXThermBase::constrainTime(double editTime) const
{
    return std::isnan(editTime) ? editTime : std::max(geometry().start, std::min(region_.end(), editTime));
}

double FXThermBase::getTime(eAccuracy accuracy) const
{
    if (!getEdit())
        return 0.0;
    const double now = getVob()->getCurrentTime();
    const double time = accuracy == eExact ? now : snapTime(now);
    return time >= std::max(geometry().end, region_.end()) ? region_.end() : time;
}

void FXThermBase::setTime(double editTime)
{
    Vob* const vob = getEdit() ? getVob() : nullptr;
    if (!vob || std::isnan(editTime))
        return;
    commands().stopPlay();
    vob->setCurrentTime(editTime);
}

double FXThermBase::leastWindow() const
{
    return std::min(timeStep(), region_.length());
}

double FXThermBase::timeStep() const
{
    const EditPtr edit = getEdit();
    return edit ? edit->getCelResolution() : 0.0;
}

double FXThermBase::snapTime(double editTime) const
{
    return frameRound(editTime, getEdit());
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
    changed(GlobChange::kContents | GlobChange::kState);
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

} // namespace oribund
