#include "oribund/colour/ShadowMidtoneHighlightExtentsEditor.h"

#include "oribund/colour/RangeGradients.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"

#include <array>
#include <cmath>

namespace oribund
{

ShadowMidtoneHighlightExtentsEditor::ShadowMidtoneHighlightExtentsEditor(unsigned short width, const Palette& palette,
                                                                         Canvas* canvas)
    : TolerantRangeEditor(width, palette, canvas)
{
}

UIString ShadowMidtoneHighlightExtentsEditor::componentName(std::size_t component) const
{
    static constexpr std::array<int, ColourData::size()> kNames{TextIds::kShadowsWhole, TextIds::kMidtonesStart,
                                                                TextIds::kMidtonesEnd, TextIds::kHighlightsWhole};
    return UIString(kNames[component]);
}

void ShadowMidtoneHighlightExtentsEditor::drawBackgroundInternal(CanvasRenderer& renderer, const Kt::Box<double>& strip)
{
    renderer.fillColumns(strip, RangeGradients::luminances(static_cast<std::size_t>(strip.width())));
}

void ShadowMidtoneHighlightExtentsEditor::drawRange(CanvasRenderer& renderer)
{
    const Kt::Box<double> strip = stripBox();
    const auto x = handlesX();
    const Colour falling = getPalette().window().withAlpha(0.6);
    renderer.line({x[0], strip.top}, {x[1], strip.bottom}, falling);
    renderer.line({x[2], strip.bottom}, {x[3], strip.top}, falling);
    drawSlopes(renderer);
    drawName(renderer, TextIds::kShadows, strip.left, x[0]);
    drawName(renderer, TextIds::kMidtones, x[1], x[2]);
    drawName(renderer, TextIds::kHighlights, x[3], strip.right);
}

/** Where there is room for all of it. */
void ShadowMidtoneHighlightExtentsEditor::drawName(CanvasRenderer& renderer, int textId, double left, double right)
{
    const Kt::Box<double> strip = stripBox();
    const WString name = displayText(textId);
    const int padding = RangeGeometry::nobbleSize() / 2;
    if (right - left < UifStd::measure(name, font()) + 2 * padding)
        return;
    const double tone = ((left + right) / 2.0 - strip.left) / strip.width();
    renderer.text({left, strip.top, right, strip.bottom}, name, font(),
                  ink(readableOn(Colour{tone, tone, tone})).withAlpha(0.8), TextAlign::Centre);
}

void ShadowMidtoneHighlightExtentsEditor::drawGraticule(std::vector<Kt::Box<double>>& marks)
{
    const Kt::Box<double> strip = stripBox();
    for (const std::size_t edge : {std::size_t{0}, std::size_t{2}}) {
        const double x = std::floor((getNobbleArea(edge).centre().x + getNobbleArea(edge + 1).centre().x) / 2.0);
        marks.push_back({x, strip.top, x + 1.0, strip.bottom});
    }
}

} // namespace oribund
