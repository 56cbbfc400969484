#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Vector2d.h"
#include "oribund/host/base/XY.h"

namespace workbench
{

/**
 * Where the frame is seen in a view. Three coordinates meet here, all with y downwards: parts of the frame ((0, 0) its
 * top left corner, (1, 1) its bottom right one), pixels of the frame, and logical pixels of the view.
 */
struct PictureMapping {
    using Pixels = oribund::XY<double>;

    oribund::Kt::Box<double> area;    ///< of the view, that the whole frame takes
    Pixels frameSize{1920.0, 1080.0}; ///< pixels of the frame, which need not be square

    bool operator==(const PictureMapping&) const = default;

    bool isEmpty() const { return area.empty(); }

    Pixels toView(const oribund::Vector2d& parts) const
    {
        return {area.left + parts.x * area.width(), area.top + parts.y * area.height()};
    }

    oribund::Vector2d fromView(const Pixels& view) const { return distanceFromView(view - area.topLeft()); }

    /** A distance in the view as one in parts of the frame; none where the frame is not seen. */
    oribund::Vector2d distanceFromView(const Pixels& distance) const
    {
        return isEmpty() ? oribund::Vector2d()
                         : oribund::Vector2d{distance.x / area.width(), distance.y / area.height()};
    }

    Pixels toFrame(const oribund::Vector2d& parts) const { return {parts.x * frameSize.x, parts.y * frameSize.y}; }

    oribund::Vector2d fromFrame(const Pixels& pixels) const { return {pixels.x / frameSize.x, pixels.y / frameSize.y}; }

    /** How many pixels of the frame a pixel of the view is high. */
    double frameScale() const { return isEmpty() ? 1.0 : frameSize.y / area.height(); }
};

} // namespace workbench
