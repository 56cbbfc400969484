#include "oribund/host/effects/curves/CubicSegment.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

CubicSegment::Point between(const CubicSegment::Point& a, const CubicSegment::Point& b, double u) noexcept
{
    return {a.time + (b.time - a.time) * u, a.value + (b.value - a.value) * u};
}

} // namespace

double solveUnitCubic(double a, double b, double s) noexcept
{
    if (!(s > 0.0))
        return 0.0;
    if (s >= 1.0)
        return 1.0;

    // x(u) = ((c3 u + c2) u + c1) u
    const double c1 = 3.0 * a;
    const double c2 = 3.0 * (b - 2.0 * a);
    const double c3 = 1.0 + 3.0 * (a - b);
    double low = 0.0;
    double high = 1.0;
    double u = s;
    // Newton's steps, and halving where one leaves the bracket: level stretches lie only at the ends.
    for (int i = 0; i < 64; ++i) {
        const double error = ((c3 * u + c2) * u + c1) * u - s;
        if (std::abs(error) <= 1e-16)
            break;
        (error > 0.0 ? high : low) = u;
        const double slope = (3.0 * c3 * u + 2.0 * c2) * u + c1;
        double better = u - error / slope;
        if (!(better > low && better < high))
            better = 0.5 * (low + high);
        if (std::abs(better - u) <= 1e-16)
            break;
        u = better;
    }
    return u;
}

double CubicSegment::parameterAt(double time) const noexcept
{
    const double start = points[0].time;
    const double length = points[3].time - start;
    if (!(length > 0.0))
        return 0.0;
    return solveUnitCubic((points[1].time - start) / length, (points[2].time - start) / length,
                          (time - start) / length);
}

double CubicSegment::evaluate(double time) const noexcept
{
    if (time <= points[0].time)
        return points[0].value;
    if (time >= points[3].time)
        return points[3].value;
    const double u = parameterAt(time);
    const double w = 1.0 - u;
    // From differences to the start, so that a level segment is level to the last bit.
    const double start = points[0].value;
    return start + u * (3.0 * w * (w * (points[1].value - start) + u * (points[2].value - start)) +
                        u * u * (points[3].value - start));
}

double CubicSegment::slope(double time) const noexcept
{
    const double u = parameterAt(time);
    const Point a = between(between(points[0], points[1], u), between(points[1], points[2], u), u);
    const Point b = between(between(points[1], points[2], u), between(points[2], points[3], u), u);
    const double run = b.time - a.time;
    return run > 0.0 ? (b.value - a.value) / run : 0.0;
}

std::pair<CubicSegment, CubicSegment> CubicSegment::split(double time) const noexcept
{
    const double u = parameterAt(time);
    const Point a = between(points[0], points[1], u);
    const Point b = between(points[1], points[2], u);
    const Point c = between(points[2], points[3], u);
    const Point ab = between(a, b, u);
    const Point bc = between(b, c, u);
    // The time is the one asked for, whatever the rounding of u.
    const Point middle{std::clamp(time, points[0].time, points[3].time), between(ab, bc, u).value};
    return {CubicSegment{{points[0], a, ab, middle}}, CubicSegment{{middle, bc, c, points[3]}}};
}

} // namespace oribund
