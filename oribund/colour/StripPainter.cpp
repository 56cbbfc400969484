#include "oribund/colour/StripPainter.h"

#include "oribund/colour/ColEyeDropBase.h"
#include "oribund/colour/RangeGradients.h"
#include "oribund/colour/RangeHistogram.h"
#include "oribund/host/canvas/CanvasRenderer.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

std::vector<Colour> StripPainter::gradient(std::size_t columns) const
{
    switch (axis_) {
    case ColourAxis::Hue:
        return RangeGradients::hues(columns, hue_, ColEyeDropBase::hueAxis().span);
    case ColourAxis::Saturation:
        return RangeGradients::saturations(columns, hue_);
    case ColourAxis::Luminance:
        break;
    }
    return RangeGradients::luminances(columns);
}

NumRange<double> StripPainter::part() const
{
    if (axis_ != ColourAxis::Hue)
        return {0.0, 1.0};
    const RangeAxis axis = ColEyeDropBase::hueAxis();
    const double first = RangeGradients::withinTurn(hue_ - axis.span / 2.0);
    return {first / axis.period, (first + axis.span) / axis.period};
}

void StripPainter::draw(CanvasRenderer& renderer, const Kt::Box<double>& strip, double hue,
                        const iFrameStatistics::Histogram* histogram)
{
    if (strip.empty())
        return;
    const bool isSameHue = axis_ == ColourAxis::Luminance || hue == hue_;
    hue_ = hue;
    const double ratio = renderer.pixelRatio();
    const XY<int> size{static_cast<int>(std::lround(strip.width() * ratio)),
                       static_cast<int>(std::lround(strip.height() * ratio))};
    const bool hasCounts =
        histogram && std::any_of(histogram->begin(), histogram->end(), [](float count) { return count > 0.0F; });
    if (!hasCounts || size.x <= 0 || size.y <= 0) {
        renderer.fillColumns(strip, gradient(static_cast<std::size_t>(strip.width())));
        return;
    }
    if (!isSameHue || picture_.size() != size || *histogram != counted_) {
        const auto columns = static_cast<std::size_t>(size.x);
        counted_ = *histogram;
        picture_ =
            RangeHistogram::picture(gradient(columns), RangeHistogram::heights(counted_, part(), columns), size.y);
    }
    renderer.image(strip, picture_, CanvasRenderer::kNone);
}

} // namespace oribund
