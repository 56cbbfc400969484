#include "oribund/colour/ShadowMidtoneHighlightExtentsEditor.h"

#include "oribund/colour/RangeGradients.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/services/TextIds.h"

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

void ShadowMidtoneHighlightExtentsEditor::drawGraticule(std::vector<Kt::Box<double>>& marks)
{
    const Kt::Box<double> strip = stripBox();
    for (const std::size_t edge : {std::size_t{0}, std::size_t{2}}) {
        const double x = std::floor((getNobbleArea(edge).centre().x + getNobbleArea(edge + 1).centre().x) / 2.0);
        marks.push_back({x, strip.top, x + 1.0, strip.bottom});
    }
}

} // namespace oribund
