#include "oribund/controls/bars/FXThermBase.h"
#include "oribund/controls/bars/KeyframeDrag.h"
#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/controls/keyframes/KeyframeKeys.h"
#include "oribund/controls/keyframes/KeyframeText.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/Menu.h"

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

namespace oribund
{

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

FXThermBase::Keyframes FXThermBase::keyframesAt(const std::optional<double>& editTime) const
{
    Keyframes keyframes = editTime ? keyframes_.at(*editTime) : Keyframes();
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
    return keyframesAt(getClosestKF(local.x, cueTolerance())).empty() ? ThermBase::contextCursor(local)
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
    const Keyframes keyframes = keyframesAt(time);
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

void FXThermBase::grabKeyframes(const Keyframes& keyframes, double editTime, int x)
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
        startDrag(std::make_shared<KeyframeDrag>(*this, x, editTime, std::move(chosen), lone));
}

void FXThermBase::handleOptionPress(const Event& event)
{
    const KeyframeCommands commands = this->commands();
    const Keyframes keyframes = keyframesAt(getClosestKF(event.position.x, cueTolerance()));
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

bool FXThermBase::usesKey(const Event& press) const
{
    if (dragState() == 0 && hasTime() && canInteract()) {
        const bool toggles = press.key == Key::Space && press.isPlainKeyPress();
        if (usesKeyframeKey(commands(), press) || (toggles && !keyframesHere().empty()))
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
    commands().toggle(keyframesHere());
    return true;
}

FXThermBase::Keyframes FXThermBase::keyframesHere() const
{
    Vob* const vob = getVob();
    return vob ? keyframesAt(vob->getCurrentTime()) : Keyframes();
}

} // namespace oribund
