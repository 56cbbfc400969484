#pragma once

#include "oribund/host/base/XY.h"

#include <utility>
#include <vector>

namespace workbench
{

/**
 * The shape that a mask lets through, in pixels of the frame. It is laid out along axes of its own, x to the right and
 * y downwards from its centre, and turned clockwise with them.
 */
struct MaskShape {
    using Pixels = oribund::XY<double>;

    enum class Kind { Rectangle, Ellipse, Triangle, Diamond };

    Kind kind = Kind::Ellipse;
    Pixels centre;
    Pixels half; ///< of the size along its own axes
    double degrees = 0.0;
    double softness = 0.0; ///< 0..1: how far from the edge to the middle it fades

    Pixels toFrame(const Pixels& own) const;
    Pixels toOwn(const Pixels& inFrame) const;

    /** The closed edge; the last point is not the first one again. */
    std::vector<Pixels> edge() const;

    /** The edge of what is let through whole. Empty where nothing is. */
    std::vector<Pixels> core() const;

    /** Along its own axes: the place on the edge from which softness is measured, and that of softness 1. */
    std::pair<Pixels, Pixels> softnessLine() const;

    /** The softness whose place on that line is nearest to a point on its own axes, 0..1. */
    double softnessAt(const Pixels& own) const;

    /** The angle, from -180 to 180 degrees, that turns the top of the shape towards a point of the frame. */
    double degreesTowards(const Pixels& inFrame) const;

private:
    std::vector<Pixels> corners(const Pixels& size) const;
};

} // namespace workbench
