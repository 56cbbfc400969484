#include "oribund/controls/bars/ThermBase.h"
#include "oribund/cues/CueDrawing.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <array>

namespace oribund
{

namespace
{
constexpr double kHandleWidth = 3.0;
} // namespace

void ThermBase::draw(CanvasRenderer& renderer)
{
    const ClipGuard clip(renderer, CanvasRenderer::toDouble(localBox()));
    drawBackground(renderer);
    if (viewRegionVisible_)
        drawViewRegion(renderer);
    if (markedRegion_)
        drawMarkedRegion(renderer, markedRegion_->start(), markedRegion_->end());
    drawContents(renderer);
    drawCurrentTime(renderer);
    if (hasFocus())
        drawFocusRing(renderer, localBox());
}

void ThermBase::drawContents(CanvasRenderer& renderer)
{
    if (minimalMode())
        return;
    drawMarks(renderer);
    drawCues(renderer);
}

void ThermBase::drawBackground(CanvasRenderer& renderer)
{
    renderer.fillRect(CanvasRenderer::toDouble(localBox()), getOuterWindowColour());
}

void ThermBase::drawViewRegion(CanvasRenderer& renderer)
{
    const ThermGeometry shown = geometry();
    drawWindow(renderer, shown.f2xClippedI(shown.windowStart), shown.f2xClippedI(shown.windowEnd));
}

void ThermBase::drawWindow(CanvasRenderer& renderer, int x0, int x1)
{
    const Kt::Box<double> box = CanvasRenderer::toDouble(Kt::Box<int>{x0, 0, x1, getHeight()});
    renderer.fillRect(box, getWindowColour());
    if (!allowZoom_)
        return;
    renderer.frameRect(box, getPalette().border());
    // Handles, by which one sees that the edges can be dragged.
    const Colour grip = getPalette().windowText().mix(getWindowColour(), 0.4);
    if (box.width() > 4.0 * kHandleWidth)
        for (const double left : {box.left, box.right - kHandleWidth})
            renderer.fillRect({left, box.top, left + kHandleWidth, box.bottom}, grip);
}

void ThermBase::drawMarkedRegion(CanvasRenderer& renderer, double from, double to)
{
    const ThermGeometry shown = geometry();
    const double third = getHeight() / 3.0;
    renderer.fillRect({shown.f2xClipped(from), third, shown.f2xClipped(to), 2.0 * third}, getMarkedRegionColour());
}

void ThermBase::drawCurrentTime(CanvasRenderer& renderer)
{
    timeMark_ = timeMarkBox();
    const std::optional<double> time = markedTime();
    if (!time)
        return;
    if (*time < geometry_.start || *time > geometry_.end)
        drawOutOfRangeIndicator(renderer, *time > geometry_.end);
    else
        drawTimeAt(renderer, geometry().f2xClippedI(*time));
}

/** What the marker covers where it would be drawn now, and a little beside it. */
Kt::Box<int> ThermBase::timeMarkBox() const
{
    const std::optional<double> time = markedTime();
    if (!time)
        return {};
    const int reach = UifStd::getWidgetGap() + 1; // that of the arrow, of which a line has no need
    const int x = geometry().f2xClippedI(*time);
    return {x - reach, 0, x + reach, getHeight()};
}

void ThermBase::currentTimeMoved()
{
    const RedrawHold hold;
    redraw(timeMark_);
    redraw(timeMarkBox());
    changed(GlobChange::kState);
}

void ThermBase::drawCueAt(CanvasRenderer& renderer, int x, const Colour& colour)
{
    drawCue(renderer, {x, 0}, colour, colour.scaled(0.3), eCueSizeNormal);
}

void ThermBase::drawMarkAt(CanvasRenderer& renderer, int x)
{
    drawSmallMark(renderer, {x, getHeight() - 4}, UifStd::getColourScheme().mark);
}

void ThermBase::drawTimeAt(CanvasRenderer& renderer, int x)
{
    // At the very end the line would stand beyond the last pixel.
    const double at = std::min(x, std::max(0, getWidth() - 1));
    renderer.fillRect({at, 0.0, at + 1.0, static_cast<double>(getHeight())}, UifStd::getColourScheme().currentTime);
}

void ThermBase::drawDiamond(CanvasRenderer& renderer, unsigned short x, const Colour& colour)
{
    const int top = (getHeight() - getDefaultDiamondSize().y) / 2;
    oribund::drawDiamond(renderer, {static_cast<int>(x), top}, colour, colour.scaled(0.3));
}

void ThermBase::drawOutOfRangeIndicator(CanvasRenderer& renderer, bool atEnd)
{
    const double middle = getHeight() / 2.0;
    const double reach = std::min(middle, static_cast<double>(UifStd::getWidgetGap()));
    const double tip = atEnd ? getWidth() : 0.0;
    const double base = atEnd ? tip - reach : reach;
    const std::array<XY<double>, 3> arrow{{{tip, middle}, {base, middle - reach}, {base, middle + reach}}};
    renderer.polygon(arrow, UifStd::getColourScheme().currentTime);
}

Colour ThermBase::getWindowColour() const
{
    return getPalette().button();
}

Colour ThermBase::getOuterWindowColour() const
{
    return getPalette().field();
}

Colour ThermBase::getMarkedRegionColour() const
{
    return UifStd::getColourScheme().mark.withAlpha(0.5);
}

} // namespace oribund
