#pragma once

#include "workbench/plugins/PixelMath.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace workbench
{

/**
 * No edge is harder than this part of its axis: whether a colour that lies on an edge is in or out would be chance.
 */
inline constexpr double kHardestEdge = 1.0 / 2048.0;

/** A line along an axis: 0 at one place, 1 at another. */
struct Slope {
    float factor;
    float start;

    Slope(double zero, double one)
        : factor(static_cast<float>(1.0 / (one - zero)))
        , start(static_cast<float>(-zero / (one - zero)))
    {
    }

    IN_LOOP float at(float place) const { return place * factor + start; }
};

/** A step from 0 to 1 between two places; `scale` is the length of the axis. */
class SoftStep
{
public:
    SoftStep(double begin, double end, double scale)
        : slope_(begin * scale, std::max(end, begin + kHardestEdge) * scale)
    {
    }

    IN_LOOP float at(float place) const { return clampTo(slope_.at(place), 1.0F); }

private:
    Slope slope_;
};

/** How far a place on an axis is within a band with soft edges: 1 in the band, 0 beyond its edges. */
class SoftRange
{
public:
    /** Where the lower edge and the band begin, and where the band and the upper edge end, in parts of the axis. */
    SoftRange(std::span<const double, 4> range, double scale)
        : rise_(std::min(range[0], range[1] - kHardestEdge) * scale, range[1] * scale)
        , fall_(std::max(range[3], range[2] + kHardestEdge) * scale, range[2] * scale)
    {
    }

    IN_LOOP float at(float place) const { return clampTo(std::min(rise_.at(place), fall_.at(place)), 1.0F); }

private:
    Slope rise_;
    Slope fall_;
};

/** The same on a circle that is `scale` long. A range as long as the circle holds everything. */
class SoftArc
{
public:
    /** In turns. Places that are asked for begin at `first`, a turn long. */
    SoftArc(std::span<const double, 4> range, double scale, double first)
        : turn_(static_cast<float>(scale))
        , before_(
              static_cast<float>((beginOf(range) - first - std::ceil(beginOf(range) - first)) * scale + first * scale))
        , rise_(0.0, (range[1] - beginOf(range)) * scale)
        , fall_((endOf(range) - beginOf(range)) * scale, (range[2] - beginOf(range)) * scale)
        , least_(endOf(range) - beginOf(range) >= 1.0 ? 1.0F : 0.0F)
    {
    }

    /** What is no place on the circle is in it only if everything is. */
    IN_LOOP float anywhere() const { return least_; }

    IN_LOOP float at(float place) const
    {
        float along = place - before_;
        along -= along >= turn_ ? turn_ : 0.0F;
        return std::min(std::max(std::min(rise_.at(along), fall_.at(along)), least_), 1.0F);
    }

private:
    static double beginOf(std::span<const double, 4> range) { return std::min(range[0], range[1] - kHardestEdge); }

    static double endOf(std::span<const double, 4> range) { return std::max(range[3], range[2] + kHardestEdge); }

    float turn_;
    float before_; ///< the beginning, in the turn before the first place
    Slope rise_;
    Slope fall_;
    float least_;
};

} // namespace workbench
