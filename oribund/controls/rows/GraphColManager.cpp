#include "oribund/controls/rows/GraphColManager.h"

#include "oribund/host/base/IdStamp.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

/** One component of a colour of full saturation, from its hue (0..1), shifted by a third of a turn for each component.
 */
double component(double hue, double shift)
{
    const double place = std::fmod(hue + shift, 1.0) * 6.0;
    return std::clamp(std::abs(place - 3.0) - 1.0, 0.0, 1.0);
}

} // namespace

Colour GraphColManager::getColourFor(const IdStamp& param)
{
    // Steps of the golden ratio spread hues evenly however many parameters there are.
    constexpr double kGoldenRatio = 0.6180339887498949;
    const double number = param.first() * 31.0 + param.second() * 7.0 + param.third();
    const double turns = number * kGoldenRatio;
    const double hue = turns - std::floor(turns);

    // Light and not too strong: it has to read on dark panels without shouting.
    const Colour pure{component(hue, 0.0), component(hue, 2.0 / 3.0), component(hue, 1.0 / 3.0), 1.0};
    return pure.mix(Colour{0.85, 0.85, 0.85, 1.0}, 0.4);
}

} // namespace oribund
