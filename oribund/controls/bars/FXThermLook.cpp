#include "oribund/controls/bars/FXThermBase.h"
#include "oribund/controls/bars/ThermMarks.h"
#include "oribund/host/canvas/CanvasRenderer.h"

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

void FXThermBase::drawCurrentTime(CanvasRenderer& renderer)
{
    if (!getEdit() || !hasTime())
        return;
    const double now = getVob()->getCurrentTime();
    const ThermGeometry shown = geometry();
    if (now < shown.start || now > shown.end)
        drawOutOfRangeIndicator(renderer, now > shown.end);
    else
        drawTimeAt(renderer, shown.f2xClippedI(now));
}

Colour FXThermBase::getWindowColour() const
{
    return getPalette().window().scaled(1.2);
}

Colour FXThermBase::getOuterWindowColour() const
{
    return getPalette().window().scaled(0.75);
}

} // namespace oribund
