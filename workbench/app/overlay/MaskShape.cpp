#include "workbench/app/overlay/MaskShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace workbench
{

namespace
{
using Pixels = MaskShape::Pixels;

constexpr double kRadians = std::numbers::pi / 180.0;

/** Enough for an ellipse as high as a screen to look round. */
constexpr int kEllipsePoints = 96;

/** How far the corners of a triangle reach, as a part of its half size. */
constexpr double kTriangleReach = 0.825;

/** The middle of a triangle is as far from its sides as this, as a part of its half size. */
constexpr double kTriangleDepth = 0.5;

Pixels turned(const Pixels& point, double degrees)
{
    const double c = std::cos(degrees * kRadians);
    const double s = std::sin(degrees * kRadians);
    return {point.x * c - point.y * s, point.x * s + point.y * c};
}
} // namespace

Pixels MaskShape::toFrame(const Pixels& own) const
{
    return centre + turned(own, degrees);
}

Pixels MaskShape::toOwn(const Pixels& inFrame) const
{
    return turned(inFrame - centre, -degrees);
}

std::vector<Pixels> MaskShape::corners(const Pixels& size) const
{
    const double x = size.x;
    const double y = size.y;
    switch (kind) {
    case Kind::Rectangle:
        return {{-x, -y}, {x, -y}, {x, y}, {-x, y}};
    case Kind::Diamond:
        return {{0.0, -y}, {x, 0.0}, {0.0, y}, {-x, 0.0}};
    case Kind::Triangle:
        return {{-kTriangleReach * x, -kTriangleReach * y},
                {kTriangleReach * x, -kTriangleReach * y},
                {0.0, kTriangleReach * y}};
    case Kind::Ellipse:
        break;
    }
    std::vector<Pixels> points;
    for (int i = 0; i < kEllipsePoints; ++i) {
        const double turn = 2.0 * std::numbers::pi * i / kEllipsePoints;
        points.push_back({x * std::cos(turn), y * std::sin(turn)});
    }
    return points;
}

std::vector<Pixels> MaskShape::edge() const
{
    std::vector<Pixels> points = corners(half);
    for (Pixels& point : points)
        point = toFrame(point);
    return points;
}

std::vector<Pixels> MaskShape::core() const
{
    Pixels size = half * (1.0 - softness);
    if (kind == Kind::Rectangle) {
        // It fades by the same distance on all sides.
        const double depth = softness * std::min(half.x, half.y);
        size = {half.x - depth, half.y - depth};
    } else if (kind == Kind::Triangle) {
        size = half * (1.0 - softness / kTriangleDepth);
    }
    if (size.x <= 0.0 || size.y <= 0.0)
        return {};
    std::vector<Pixels> points = corners(size);
    for (Pixels& point : points)
        point = toFrame(point);
    return points;
}

std::pair<Pixels, Pixels> MaskShape::softnessLine() const
{
    // To the lower left, where no other handle is.
    switch (kind) {
    case Kind::Rectangle: {
        const double depth = std::min(half.x, half.y);
        return {{-half.x, half.y}, {depth - half.x, half.y - depth}};
    }
    case Kind::Triangle: {
        const Pixels from{-kTriangleReach / 2.0 * half.x, 0.0};
        return {from, from * (1.0 - 1.0 / kTriangleDepth)};
    }
    case Kind::Diamond:
        return {half * 0.5 - Pixels{half.x, 0.0}, {}};
    case Kind::Ellipse:
        break;
    }
    const double diagonal = std::numbers::sqrt2 / 2.0;
    return {{-diagonal * half.x, diagonal * half.y}, {}};
}

double MaskShape::softnessAt(const Pixels& own) const
{
    const auto [from, to] = softnessLine();
    const Pixels line = to - from;
    const Pixels reached = own - from;
    const double length = line.x * line.x + line.y * line.y;
    return length > 0.0 ? std::clamp((reached.x * line.x + reached.y * line.y) / length, 0.0, 1.0) : 0.0;
}

double MaskShape::degreesTowards(const Pixels& inFrame) const
{
    const Pixels away = inFrame - centre;
    return away == Pixels() ? degrees : std::atan2(away.x, -away.y) / kRadians;
}

} // namespace workbench
