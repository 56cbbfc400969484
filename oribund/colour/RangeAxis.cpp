#include "oribund/colour/RangeAxis.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

double middleOf(const ColourData& range)
{
    return (range[0] + range[3]) / 2.0;
}

ColourData shifted(ColourData range, double by)
{
    for (double& component : range.values)
        component += by;
    return range;
}

} // namespace

bool isUsableRange(const ColourData& range)
{
    constexpr double kFarthest = 1e9;
    return std::all_of(range.values.begin(), range.values.end(),
                       [](double component) { return std::abs(component) <= kFarthest; });
}

ColourData RangeAxis::ascending(ColourData range) const
{
    if (!isCircular())
        return range;
    for (std::size_t i = 1; i < ColourData::size(); ++i) {
        const double missing = range[i - 1] - range[i];
        if (missing > 0.0)
            range[i] += std::ceil(missing / period) * period;
    }
    return range;
}

double RangeAxis::nearest(double value, double near) const
{
    return isCircular() ? near + std::remainder(value - near, period) : value;
}

ColourData RangeAxis::inFirstTurn(const ColourData& range) const
{
    return isCircular() ? shifted(range, -std::floor(middleOf(range) / period) * period) : range;
}

ColourData RangeAxis::shown(const ColourData& range) const
{
    if (!isCircular() || range[3] - range[0] <= span)
        return range;
    ColourData part = range;
    for (double& component : part.values)
        component = std::clamp(component, middleOf(range) - span / 2.0, middleOf(range) + span / 2.0);
    return part;
}

double RangeAxis::fractionOf(const ColourData& range, std::size_t component) const
{
    double fraction = range[component] / span;
    if (isCircular())
        fraction = fraction - middleOf(range) / span + 0.5;
    return std::clamp(fraction, 0.0, 1.0);
}

ColourData RangeAxis::moved(const ColourData& range, RangePart part, double delta) const
{
    constexpr std::size_t kLast = 3;
    const bool isFirst = part.first == 0;
    const bool isLast = part.last == kLast;
    double least = isFirst ? 0.0 : range[part.first - 1];
    double most = isLast ? span : range[part.last + 1];
    if (isCircular() && isFirst)
        least = isLast ? range[0] - period : range[kLast] - span;
    if (isCircular() && isLast)
        most = isFirst ? range[kLast] + period : range[0] + span;
    const double down = std::min(least - range[part.first], 0.0);
    const double up = std::max(most - range[part.last], 0.0);
    ColourData result = range;
    for (std::size_t i = part.first; i <= part.last; ++i)
        result[i] += std::clamp(delta, down, up);
    return result;
}

} // namespace oribund
