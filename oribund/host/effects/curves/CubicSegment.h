#pragma once

#include "oribund/host/base/Export.h"

#include <array>
#include <utility>

namespace oribund
{

/**
 * A piece of a curve: a cubic Bezier in the plane of value and time, which is that of the graph, whose four control
 * points ascend in time. That order makes each time belong to one value, and it survives subdivision, so that a piece
 * cut in two at any time is two such pieces which run exactly where it ran.
 */
struct ORIBUND_API CubicSegment {
    struct Point {
        double time = 0.0;
        double value = 0.0;

        bool operator==(const Point&) const = default;
    };

    std::array<Point, 4> points;

    double evaluate(double time) const noexcept;
    /** Value per time at that time; 0 where the curve is vertical. */
    double slope(double time) const noexcept;
    /** The two parts before and after `time`, which lies within the segment. */
    std::pair<CubicSegment, CubicSegment> split(double time) const noexcept;

    /** The curve's own parameter, 0..1, at a time. */
    double parameterAt(double time) const noexcept;
};

/**
 * The u in 0..1 at which a cubic from 0 to 1 with the inner ordinates 0 <= a <= b <= 1 takes the value s. The heart of
 * CubicSegment, for times that are scaled to the segment.
 */
ORIBUND_API double solveUnitCubic(double a, double b, double s) noexcept;

} // namespace oribund
