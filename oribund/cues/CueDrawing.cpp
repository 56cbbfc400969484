#include "oribund/cues/CueDrawing.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"

#include <algorithm>

namespace oribund
{

namespace
{

constexpr Colour kWhite{1.0, 1.0, 1.0};
constexpr double kHighlight = 0.4;
constexpr double kMarkEdge = 0.3;

/** Pixels of one row, from `left` up to but without `right`. */
struct Span {
    int left = 0;
    int right = 0;
};

void fillRow(CanvasRenderer& renderer, const Span& span, int y, const Colour& colour)
{
    if (span.left < span.right)
        renderer.fillRect(CanvasRenderer::toDouble(Kt::Box<int>{span.left, y, span.right, y + 1}), colour);
}

/** A host may indent groups deeper than a gap is wide. Of a mark that would leave nothing: it takes less then. */
int markIndent()
{
    const int indent = UifStd::getIndentWidth();
    const int gap = UifStd::getWidgetGap();
    return indent < gap ? indent : std::max(1, gap / 3);
}

/** A mark far outside every canvas, moved to where the edges of it can still be counted in pixels. */
XY<int> nearby(const XY<int>& position)
{
    constexpr int kFar = 1'000'000'000;
    return {std::clamp(position.x, -kFar, kFar), std::clamp(position.y, -kFar, kFar)};
}

Colour shade(const Colour& top, const Colour& bottom, int row, int height)
{
    return height > 1 ? top.mix(bottom, static_cast<double>(row) / (height - 1)) : top;
}

/** Row `row` of a cue: straight sides down to the middle, from there on narrower to a tip two pixels wide. */
Span cueRow(const XY<int>& position, const XY<int>& size, int row)
{
    int halfWidth = size.x / 2;
    const int straight = size.y / 2;
    if (row >= straight)
        halfWidth -= (halfWidth - 1) * (row - straight + 1) / (size.y - straight);
    return {position.x - halfWidth, position.x + halfWidth};
}

} // namespace

XY<int> getDefaultDiamondSize()
{
    return {UifStd::getRowHeight() / 3, UifStd::getWidgetGap() * 3};
}

XY<int> getCueDimensions(eCueSize size)
{
    const int gap = UifStd::getWidgetGap();
    const int evenWidth = (gap + 1) & ~1;
    switch (size) {
    case eCueSizeSmall:
        return {evenWidth, (gap + 1) / 2};
    case eCueSizeNormal:
        return {evenWidth, gap - markIndent()};
    case eCueSizeLarge:
        break;
    }
    const int width = gap / 2 * 4;
    return {width, markIndent() + width};
}

void fillDiamond(CanvasRenderer& renderer, const XY<int>& centre, int radius, const Colour& colour)
{
    if (radius < 0)
        return;
    const auto [x, y] = nearby(centre);
    fillRow(renderer, {x - radius, x + radius + 1}, y, colour);
    for (int k = 1; k <= radius; ++k) {
        const Span span{x - (radius - k), x + (radius - k) + 1};
        fillRow(renderer, span, y + k, colour);
        fillRow(renderer, span, y - k, colour);
    }
}

void drawKeyFrame(CanvasRenderer& renderer, const XY<int>& centre, const Colour& fill, const Colour& outline)
{
    const int radius = UifStd::getWidgetGap();
    fillDiamond(renderer, centre, radius, outline);
    fillDiamond(renderer, centre, radius - 1, fill);
}

void drawDiamond(CanvasRenderer& renderer, const XY<int>& position, const XY<int>& size, const Colour& top,
                 const Colour& bottom)
{
    if (size.x < 0 || size.y <= 0)
        return;
    const XY<int> at = nearby(position);
    const auto row = [&](int index, int width) {
        const int left = at.x - width / 2;
        fillRow(renderer, {left, left + width}, at.y + index, shade(top, bottom, index, size.y));
    };
    const int half = size.y / 2;
    for (int i = 0; i < half; ++i) {
        const double f = static_cast<double>(i) / half;
        const int width = (static_cast<int>(size.x * f) | 1) + 1;
        row(i, width);
        // Of an even height the innermost mirrored row is where the middle one goes: drawn twice, it would show
        // through translucent colours.
        if (const int mirrored = size.y - 1 - i; mirrored != half)
            row(mirrored, width);
    }
    row(half, size.x + 1);
}

void drawDiamond(CanvasRenderer& renderer, const XY<int>& position, const Colour& top, const Colour& bottom)
{
    drawDiamond(renderer, position, getDefaultDiamondSize(), top, bottom);
}

void drawDiamondWithTopHighlight(CanvasRenderer& renderer, const XY<double>& position, const Colour& top,
                                 const Colour& bottom)
{
    const XY<int> at = nearby({roundHalfAway(position.x), roundHalfAway(position.y)});
    const XY<int> size = getDefaultDiamondSize();
    const int inset = markIndent();
    const Colour rim = UifStd::getColourScheme().window().mix(kWhite, kHighlight);
    drawDiamond(renderer, at, size, rim, Colour{0.0, 0.0, 0.0, 0.0});
    drawDiamond(renderer, {at.x, at.y + inset}, {size.x - 2 * inset, size.y - 2 * inset}, top, bottom);
}

void drawSmallMark(CanvasRenderer& renderer, const XY<int>& position, const Colour& colour)
{
    constexpr int kReach[] = {2, 2, 1, 0};
    const Colour edge = colour.scaled(kMarkEdge);
    const XY<int> at = nearby(position);
    int y = at.y;
    for (const int reach : kReach) {
        fillRow(renderer, {at.x - reach, at.x - reach + 1}, y, edge);
        fillRow(renderer, {at.x - reach + 1, at.x + reach}, y, colour);
        if (reach > 0)
            fillRow(renderer, {at.x + reach, at.x + reach + 1}, y, edge);
        ++y;
    }
}

void drawCue(CanvasRenderer& renderer, const XY<int>& position, const Colour& fill, const Colour& outline,
             eCueSize cueSize)
{
    const XY<int> at = nearby(position);
    const XY<int> size = getCueDimensions(cueSize);
    for (int row = 0; row < size.y; ++row) {
        const Span span = cueRow(at, size, row);
        const int y = at.y + row;
        if (row == 0 || row == size.y - 1) {
            fillRow(renderer, span, y, outline);
            continue;
        }
        // A pixel belongs to the outline where one of its four neighbours is outside; rows never get wider downwards.
        const Span below = cueRow(at, size, row + 1);
        const Span inner{std::max(span.left + 1, below.left), std::min(span.right - 1, below.right)};
        fillRow(renderer, {span.left, inner.left}, y, outline);
        fillRow(renderer, inner, y, fill);
        fillRow(renderer, {inner.right, span.right}, y, outline);
    }
}

} // namespace oribund
