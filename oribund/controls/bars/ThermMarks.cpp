#include "oribund/controls/bars/ThermMarks.h"

#include "oribund/cues/CueDrawing.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"

#include <algorithm>

namespace oribund
{

void keepWhole(ThermMarks& marks, int width)
{
    const int reach = UifStd::getWidgetGap();
    if (width <= 2 * reach)
        return;
    for (ThermMark& mark : marks)
        if (mark.x >= 0 && mark.x <= width)
            mark.x = std::clamp(mark.x, reach, width - 1 - reach);
}

void drawMarksGround(CanvasRenderer& renderer, const ThermMarks& marks, int height)
{
    const int reach = UifStd::getWidgetGap() + 1;
    int drawn = -reach; // to where the ground is coloured already, so that it is not coloured twice
    for (const ThermMark& mark : marks) {
        if (!mark.selected)
            continue;
        const int from = std::max(drawn, mark.x - reach);
        drawn = mark.x + reach + 1;
        renderer.fillRect(CanvasRenderer::toDouble(Kt::Box<int>{from, 0, drawn, height}),
                          UifStd::getColourScheme().selection);
    }
}

void drawKeyframeMarks(CanvasRenderer& renderer, const ThermMarks& marks, int y, const Colour& outline)
{
    constexpr Colour kFill{0.4, 0.1, 0.4};
    constexpr Colour kSelectedFill{1.0, 1.0, 0.0};
    // Those that are selected stand on top.
    for (const bool selected : {false, true}) {
        for (const ThermMark& mark : marks) {
            if (mark.selected == selected)
                drawKeyFrame(renderer, {mark.x, y}, selected ? kSelectedFill : kFill, outline);
        }
    }
}

} // namespace oribund
