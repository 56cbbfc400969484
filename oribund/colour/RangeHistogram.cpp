#include "oribund/colour/RangeHistogram.h"

#include "oribund/host/canvas/CanvasRenderer.h"

#include <algorithm>
#include <cmath>

namespace oribund::RangeHistogram
{

std::vector<XY<double>> outline(const iFrameStatistics::Histogram& histogram, const Kt::Box<double>& strip,
                                const NumRange<double>& part)
{
    constexpr double kTallest = 0.94;
    constexpr double kBins = iFrameStatistics::kBins;
    const float most = *std::max_element(histogram.begin(), histogram.end());
    if (!(most > 0.0F) || !(part.length() > 0.0) || strip.empty())
        return {};
    const auto heightOf = [&](double bin) {
        const double turn = bin - std::floor(bin / kBins) * kBins;
        const float count = histogram[std::min(static_cast<std::size_t>(turn), iFrameStatistics::kBins - 1)];
        return strip.bottom - kTallest * strip.height() * std::sqrt(std::clamp(count / most, 0.0F, 1.0F));
    };
    const double first = std::floor(part.start() * kBins);
    const double end = std::ceil(part.end() * kBins);
    std::vector<XY<double>> points{{strip.left, strip.bottom}};
    for (double bin = first; bin < end; ++bin) {
        const double place = ((bin + 0.5) / kBins - part.start()) / part.length();
        points.push_back({strip.left + std::clamp(place, 0.0, 1.0) * strip.width(), heightOf(bin)});
    }
    points.push_back({strip.right, strip.bottom});
    return points;
}

void draw(CanvasRenderer& renderer, const iFrameStatistics::Histogram& histogram, const Kt::Box<double>& strip,
          const NumRange<double>& part)
{
    constexpr Colour kShade{0.0, 0.0, 0.0, 0.5};
    constexpr Colour kLine{1.0, 1.0, 1.0, 0.6};
    std::vector<XY<double>> points = outline(histogram, strip, part);
    if (points.empty())
        return;
    // A light shape that the dark one hides but for its upper edge.
    std::vector<XY<double>> edge = points;
    for (std::size_t i = 1; i + 1 < edge.size(); ++i)
        edge[i].y = std::max(strip.top, edge[i].y - 1.0);
    for (std::size_t i = points.size() - 1; i-- > 1;)
        edge.push_back(points[i]);
    renderer.polygon(edge, kLine);
    renderer.polygon(points, kShade);
}

} // namespace oribund::RangeHistogram
