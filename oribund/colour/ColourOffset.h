#pragma once

#include "oribund/controls/binding/ColourLevelAccessor.h"
#include "oribund/host/base/XY.h"

#include <cmath>
#include <numbers>

namespace oribund
{

/**
 * A colour offset as a place on a wheel, and the other way round: red is up, green at the lower left, blue at the lower
 * right; the place is 1 away from the middle when one of them is 1 above the level. The level is apart from it.
 */
namespace ColourOffset
{

/** Where on the wheel red (0), green (1) and blue (2) lie: x to the right, y up. */
inline XY<double> directionOf(std::size_t component)
{
    constexpr double kThird = 2.0 * std::numbers::pi / 3.0;
    const double angle = std::numbers::pi / 2.0 + kThird * static_cast<double>(component);
    return {std::cos(angle), std::sin(angle)};
}

inline XY<double> pointOf(const ColourData& offset)
{
    XY<double> point;
    for (std::size_t i = 0; i < 3; ++i)
        point = point + directionOf(i) * (offset[i] * 2.0 / 3.0);
    return point;
}

/** The offset moved to a place, at the level that it has. */
inline ColourData withPoint(const ColourData& offset, const XY<double>& point)
{
    ColourData result = offset;
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = levelOf(offset) + point.x * directionOf(i).x + point.y * directionOf(i).y;
    return result;
}

/** The hue, in degrees, in which a place of the wheel lies. */
inline double hueOf(const XY<double>& point)
{
    const double hue = std::atan2(point.y, point.x) * 180.0 / std::numbers::pi - 90.0;
    return hue < 0.0 ? hue + 360.0 : hue;
}

} // namespace ColourOffset

} // namespace oribund
