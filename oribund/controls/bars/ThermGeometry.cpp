#include "oribund/controls/bars/ThermGeometry.h"

#include "oribund/host/base/Numeric.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

/** Near enough to be counted in, and subtracted from each other as, whole pixels. */
double nearby(double pixel)
{
    constexpr double kFar = 1e9;
    return std::isnan(pixel) ? 0.0 : std::clamp(pixel, -kFar, kFar);
}

} // namespace

void ThermGeometry::set(double spanStart, double spanEnd, double winStart, double winEnd)
{
    start = spanStart;
    end = spanEnd;
    windowStart = std::max(start, std::min(end, winStart));
    windowEnd = std::max(start, std::min(end, winEnd));
}

double ThermGeometry::f2x(double t) const
{
    return start != end ? (t - start) / (end - start) * width : 0.0;
}

int ThermGeometry::f2xi(double t) const
{
    return roundHalfAway(nearby(f2x(t)));
}

double ThermGeometry::f2xClipped(double t) const
{
    return std::min(f2x(t), static_cast<double>(width));
}

int ThermGeometry::f2xClippedI(double t) const
{
    return static_cast<int>(nearby(f2xClipped(t)) + 0.5);
}

int ThermGeometry::wholePixel(double t) const
{
    return static_cast<int>(nearby(f2x(t)));
}

double ThermGeometry::f2x(double f, double a, double b, double lo, double hi) const
{
    return lo != hi ? width * (((b - a) * f + a) - lo) / (hi - lo) : 0.0;
}

double ThermGeometry::x2f(double x) const
{
    return width != 0 ? (end - start) * (x / width) + start : start;
}

double ThermGeometry::clamp(double t) const
{
    return std::isnan(t) ? t : std::max(start, std::min(end, t));
}

double ThermGeometry::place(double t) const
{
    return windowStart != windowEnd ? (t - windowStart) / (windowEnd - windowStart) : 0.0;
}

NumRange<double> ThermGeometry::zoomedAbout(double t, double length) const
{
    const double p = place(t);
    return {t - p * length, t + (1.0 - p) * length};
}

ThermHit ThermGeometry::hitTest(int x, double t, bool grabsTime, bool grabsWindow, int tolerance) const
{
    if (grabsTime && std::abs(f2x(t) - x) < tolerance)
        return ThermHit::CurrentTime;
    if (!grabsWindow)
        return ThermHit::None;
    const int left = f2xClippedI(std::max(start, windowStart));
    const int right = f2xClippedI(std::min(end, windowEnd));
    const int toLeft = std::abs(x - left);
    const int toRight = std::abs(x - right);
    // An edge on which the current time stands could not zoom about it.
    const bool leftInReach = toLeft <= tolerance && t != windowStart;
    const bool rightInReach = toRight <= tolerance && t != windowEnd;
    if (!leftInReach && !rightInReach) {
        const bool zoomed = start != windowStart || end != windowEnd;
        return zoomed && left <= x && x <= right ? ThermHit::WindowBody : ThermHit::None;
    }
    return toLeft < toRight || (toLeft == toRight && x < left) ? ThermHit::LeftEdge : ThermHit::RightEdge;
}

NumRange<double> ThermGeometry::draggedEdge(ThermHit edge, double to, double t, double least) const
{
    const double p = place(t);
    if (edge == ThermHit::LeftEdge) {
        const double limit = p != 0.0 ? t - p * least : windowEnd - least;
        const double newStart = std::max(start, p < 0.0 ? std::max(limit, to) : std::min(limit, to));
        return {newStart, p != 0.0 ? std::min(end, newStart + (t - newStart) / p) : windowEnd};
    }
    const double q = 1.0 - p;
    const double limit = q != 0.0 ? t + q * least : windowStart + least;
    const double newEnd = std::min(end, q < 0.0 ? std::min(limit, to) : std::max(limit, to));
    return {q != 0.0 ? std::max(start, newEnd - (newEnd - t) / q) : windowStart, newEnd};
}

} // namespace oribund
