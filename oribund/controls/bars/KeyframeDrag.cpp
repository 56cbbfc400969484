#include "oribund/controls/bars/KeyframeDrag.h"

#include "oribund/controls/bars/FXThermBase.h"
#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/toolkit/core/Event.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

KeyframeDrag::KeyframeDrag(FXThermBase& bar, int x, double anchor, Keyframes selected, bool lone)
    : ThermDrag(bar, ThermHit::Keyframe, 0)
    , effectBar_(bar)
    , lastX_(x)
    , anchor_(anchor)
    , pressedAt_(anchor)
    , selected_(std::move(selected))
    , lone_(lone)
{
    // They are the ones that are selected now, whatever else the track shows at the first move.
    if (CompoundEffectMonitor* const monitor = bar.commands().monitor())
        monitor->trimSelectedKeyframes(bar.getTrackID(), 0.0);
}

MouseButton KeyframeDrag::button() const
{
    return MouseButton::Right;
}

void KeyframeDrag::motion(int x)
{
    const KeyframeCommands commands = effectBar_.commands();
    if (x == lastX_ || !commands.canEdit())
        return;
    lastX_ = x;
    const double time = timeAt(x);
    const double delta = time - anchor_;
    anchor_ = time;
    distance_ += std::abs(delta);
    commands.trimSelected(delta);
}

void KeyframeDrag::finish()
{
    const KeyframeCommands commands = effectBar_.commands();
    if (CompoundEffectMonitor* const monitor = commands.monitor())
        monitor->endTrim();
    if (lone_)
        commands.selectAll(false);
}

void KeyframeDrag::abort()
{
    const KeyframeCommands commands = effectBar_.commands();
    if (CompoundEffectMonitor* const monitor = commands.monitor())
        monitor->cancelTrim();
    // By edit time: their effect may have got another length meanwhile, and with that they other effect times.
    Keyframes there = effectBar_.keyframesAt(pressedAt_);
    std::erase_if(there, [this](const auto& keyframe) {
        return std::none_of(selected_.begin(), selected_.end(), [&](const auto& pressed) {
            return pressed.effect == keyframe.effect && pressed.param == keyframe.param;
        });
    });
    commands.select(there, false);
}

} // namespace oribund
