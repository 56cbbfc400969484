#include "oribund/controls/bars/FXThermBase.h"
#include "oribund/controls/bars/ThermMarks.h"
#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/controls/keyframes/KeyframeText.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

void FXThermBase::drawWindow(CanvasRenderer& renderer, int x0, int x1)
{
    renderer.fillRect(CanvasRenderer::toDouble(localBox()), getOuterWindowColour());
    ThermBase::drawWindow(renderer, x0, x1);
}

void FXThermBase::drawContents(CanvasRenderer& renderer)
{
    marks_ = keyframes_.marksOn(geometry());
    keepWhole(marks_, getWidth());
    if (!minimalMode())
        drawRegions(renderer);
    drawSelectedKeyframesBackground(renderer);
    ThermBase::drawContents(renderer);
    drawKeyFrames(renderer);
}

void FXThermBase::drawRegions(CanvasRenderer& renderer)
{
    // One line for each stretch of effects, spread over the height.
    const ThermGeometry shown = geometry();
    const std::vector<NumRange<double>> regions = keyframes_.regions();
    const double step = getHeight() / (static_cast<double>(regions.size()) + 1.0);
    double y = 0.0;
    for (const NumRange<double>& region : regions) {
        y = std::floor(y + step);
        const double from = std::max(0.0, shown.f2x(region.start()));
        renderer.fillRect({from, y, shown.f2xClipped(region.end()), y + 1.0}, getPalette().border());
    }
}

void FXThermBase::drawSelectedKeyframesBackground(CanvasRenderer& renderer)
{
    drawMarksGround(renderer, marks_, getHeight());
}

void FXThermBase::drawKeyFrames(CanvasRenderer& renderer)
{
    drawKeyframeMarks(renderer, marks_, getHeight() / 2, getPalette().windowText());
}

void FXThermBase::drawMarks(CanvasRenderer& renderer)
{
    // The ends of the effects, where the bar shows time beyond them.
    const ThermGeometry shown = geometry();
    for (const double end : {region_.start(), region_.end()}) {
        if (end > shown.start && end < shown.end)
            drawMarkAt(renderer, shown.f2xi(end));
    }
}

std::optional<double> FXThermBase::markedTime() const
{
    return getEdit() && hasTime() ? std::optional(getVob()->getCurrentTime()) : std::nullopt;
}

Colour FXThermBase::getWindowColour() const
{
    return getPalette().window().scaled(1.2);
}

Colour FXThermBase::getOuterWindowColour() const
{
    return getPalette().window().scaled(0.75);
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
    if (!monitor || part < 0 || part >= accessiblePartCount())
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
    description.action = keyframesAt(time).empty() ? AccessibleAction::None : AccessibleAction::Toggle;
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
    const Keyframes keyframes = keyframesAt(keyframes_.times()[static_cast<std::size_t>(part)]);
    commands().toggle(keyframes);
    return !keyframes.empty();
}

} // namespace oribund
