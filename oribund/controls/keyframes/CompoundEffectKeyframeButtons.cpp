#include "oribund/controls/keyframes/CompoundEffectKeyframeButtons.h"

#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Label.h"

#include <array>
#include <memory>
#include <utility>

namespace oribund
{

const String CompoundEffectKeyframeButtons::addMsg("AddVFXKeyframe");
const String CompoundEffectKeyframeButtons::removeMsg("RemoveVFXKeyframe");
const String CompoundEffectKeyframeButtons::previousMsg("Prev keyframe");
const String CompoundEffectKeyframeButtons::nextMsg("Next keyframe");
const String CompoundEffectKeyframeButtons::zoomInMsg("ZoomToSignificantRegion");
const String CompoundEffectKeyframeButtons::zoomOutMsg("ZoomToWholeEffect");

CompoundEffectKeyframeButtons::CompoundEffectKeyframeButtons(const InitArgs& args)
    : StandardPanel(args)
    , CompoundEffectMonitorClient(nullptr)
    , VobClient(args.vob)
{
    const int gap = UifStd::getWidgetGap();
    previous_ = addButton("previous-keyframe", previousMsg, TextIds::kPreviousKeyframe, 0);
    next_ = addButton("next-keyframe", nextMsg, TextIds::kNextKeyframe, 0);
    add_ = addButton("keyframe-add", addMsg, TextIds::kAddKeyframes, gap);
    remove_ = addButton("keyframe-remove", removeMsg, TextIds::kRemoveKeyframes, 0);
    zoom_ = addButton("zmin", zoomInMsg, TextIds::kZoomIn, gap);
    Label::InitArgs label(0, static_cast<unsigned short>(UifStd::getControlHeight()));
    label.text = UIString(TextIds::kKeyframes);
    label.id = "keyframes_label";
    label_ = addWidget(std::make_unique<Label>(label), WidgetPosition::rightOf(*zoom_, gap));
    setAccessibleName(UIString(TextIds::kKeyframes));

    const int width = args.width ? args.width : label_->box().right + getBorder().right;
    resize(width, args.height ? args.height : UifStd::getRowHeight());
    setTrackID(args.track);
}

CompoundEffectKeyframeButtons::~CompoundEffectKeyframeButtons() = default;

Button* CompoundEffectKeyframeButtons::addButton(const char* icon, const String& message, int text, int gap)
{
    const auto side = static_cast<unsigned short>(UifStd::getControlHeight());
    Button::InitArgs args(side, side);
    args.icon = Image::icon(icon);
    args.message = message;
    args.style = Button::Style::Flat;
    args.id = message;
    auto button = std::make_unique<Button>(args);
    button->setTooltip(UIString(text));
    button->setEnabled(false);
    const Glob* const before = previousWidget();
    return addWidget(std::move(button),
                     before ? WidgetPosition::rightOf(*before, gap) : WidgetPosition::userTopLeft(0, 0));
}

void CompoundEffectKeyframeButtons::setTrackID(const IdStamp& track)
{
    track_ = track;
    setVob(getVob()); // the edit may be another one
    setMonitor(commands().monitor());
    updateButtons(eRedrawFlag::Yes);
}

void CompoundEffectKeyframeButtons::resize(double width, double height)
{
    const RedrawHold hold;
    StandardPanel::resize(width, height);
    const Kt::Box<int> area = getUserArea();
    setWidgetPosition(*previous_, WidgetPosition::userTopLeft(0, (area.height() - previous_->getHeight()) / 2));
    label_->setVisible(zoom_->box().right + UifStd::getWidgetGap() + label_->getWidth() <= area.right);
}

// What the buttons do

KeyframeCommands CompoundEffectKeyframeButtons::commands() const
{
    return {getVob(), track_};
}

bool CompoundEffectKeyframeButtons::react(const Event& event)
{
    if (event.code != EventCode::Message)
        return StandardPanel::react(event);
    // What is sent off below may destroy the panel.
    const GlobRef<CompoundEffectKeyframeButtons> self(this);
    commands().stopPlay();
    if (!self)
        return true;
    if (event.message == addMsg)
        addNewCtrlPnt();
    else if (event.message == removeMsg)
        deleteCtrlPnt();
    else if (event.message == previousMsg)
        moveToPrevCtrlPnt();
    else if (event.message == nextMsg)
        moveToNextCtrlPnt();
    else
        return StandardPanel::react(event);
    return true;
}

void CompoundEffectKeyframeButtons::moveToPrevCtrlPnt()
{
    commands().goToAdjacent(false);
}

void CompoundEffectKeyframeButtons::moveToNextCtrlPnt()
{
    commands().goToAdjacent(true);
}

void CompoundEffectKeyframeButtons::addNewCtrlPnt()
{
    commands().addAtCurrentTime();
}

void CompoundEffectKeyframeButtons::deleteCtrlPnt()
{
    commands().removeSelectedOrHere();
}

// What they show

void CompoundEffectKeyframeButtons::handleFXModifications(const ChangeDescription&)
{
    updateButtons(eRedrawFlag::Yes);
}

void CompoundEffectKeyframeButtons::handleModifications(const EditModification& modification)
{
    // Whether the edit is read-only is nothing that the monitor tells of.
    if (modification.type == EditModification::Type::Wholesale)
        updateButtons(eRedrawFlag::Yes);
}

void CompoundEffectKeyframeButtons::updateButtons(eRedrawFlag redrawFlag)
{
    CompoundEffectMonitor* const effects = commands().monitor();
    if (!effects || effects->effectsOf(track_).empty())
        return;
    const RedrawHold hold;
    apply(findStates(*effects), redrawFlag);
}

CompoundEffectKeyframeButtons::States CompoundEffectKeyframeButtons::findStates(CompoundEffectMonitor& effects)
{
    States states;
    const double start = effects.getCompoundEditRegion(track_).start();
    states.previous = getVob()->getCurrentTime() - start > kValueTolerance;
    states.zoom = true;

    effects.populateKeyframesForCompoundEffect(track_, keyframes_);
    const bool editable = commands().canEdit();
    double latest = 0.0;
    for (const auto& effect : effects.effectsAndPartsOf(track_)) {
        if (!showsEffect(*effect))
            continue;
        const double time = effects.getCurrentFXTime(effect).normalised;
        if (time - latest > kValueTolerance)
            latest = time;
        if (editable)
            considerEffect(keyframes_[effect], time, states);
    }
    states.next = 1.0 - latest > kValueTolerance;
    return states;
}

void CompoundEffectKeyframeButtons::considerEffect(const FXKeyframeHelpers::KeyframeSet& keyframes, double fxTime,
                                                   States& states) const
{
    CompoundEffectMonitor& effects = *commands().monitor();
    if (keyframes.empty()) {
        states.add = states.add || effects.getNumKeyframedParams(track_) != 0;
    } else if (fxTime < -kValueTolerance || fxTime > 1.0 + kValueTolerance) {
        states.add = false;
    } else {
        const int here = keyframes.countAt(fxTime);
        states.add = states.add || here != keyframes.keyframedParamCount();
        states.remove = states.remove || here > 0 || commands().countSelected() > 0;
    }
}

void CompoundEffectKeyframeButtons::apply(const States& states, eRedrawFlag redrawFlag)
{
    const std::array<std::pair<Button*, bool>, 5> wanted{{{previous_, states.previous},
                                                          {next_, states.next},
                                                          {add_, states.add},
                                                          {remove_, states.remove},
                                                          {zoom_, states.zoom}}};
    for (const bool enabled : {true, false}) {
        for (const auto& [button, on] : wanted) {
            if (on != enabled || button->isEnabled() == on)
                continue;
            if (!on && button->hasFocus())
                passFocusOn();
            button->setEnabled(on, redrawFlag);
        }
    }
}

void CompoundEffectKeyframeButtons::passFocusOn()
{
    // To what changes nothing: the key that did this press may well be pressed again.
    for (Button* const button : {previous_, next_, zoom_}) {
        if (!button->hasFocus() && button->takeFocus())
            return;
    }
}

void CompoundEffectKeyframeButtons::setZoomActive(bool active, eRedrawFlag redrawFlag)
{
    if (active == zoomActive_)
        return;
    zoomActive_ = active;
    zoom_->setIcon(Image::icon(active ? "zmout" : "zmin"), redrawFlag);
    zoom_->setMessage(active ? zoomOutMsg : zoomInMsg);
    zoom_->setTooltip(UIString(active ? TextIds::kZoomOut : TextIds::kZoomIn));
}

void CompoundEffectKeyframeButtons::setVisibleWindowExtents(const NumRange<FXTime>& visible,
                                                            const NumRange<FXTime>& whole)
{
    setZoomActive((whole.length() - visible.length()).normalised > kValueTolerance, eRedrawFlag::Yes);
}

} // namespace oribund
