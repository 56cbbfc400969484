#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/NumRange.h"

namespace oribund
{

/** What a press on a time bar takes hold of. */
enum class ThermHit : unsigned {
    None = 0,          ///< the plain bar
    CurrentTime = 8,   ///< the marker of the current time
    LeftEdge = 3,      ///< of the zoom window
    RightEdge = 5,     ///< of the zoom window
    WindowBody = 0x28, ///< the inside of the zoom window: it moves, and takes the current time along
    Keyframe = 0x40    ///< of an effect's bar
};

/**
 * Edit times and pixels of a time bar: the span that its full width stands for, and the zoom window inside it.
 *
 * A plain value. On a bar without width, and for a span without length, every time is at pixel 0 and every pixel
 * stands for the start. Pixels that an int does not hold are a thousand million away; NaN is at 0.
 */
struct ORIBUND_API ThermGeometry {
    double start = 0.0;
    double end = 1.0;
    double windowStart = 0.0;
    double windowEnd = 1.0;
    int width = 0; ///< pixels

    /** Takes the span as it is, and of the window what lies inside it. */
    void set(double spanStart, double spanEnd, double winStart, double winEnd);

    /** The pixel of a time; outside the bar for a time outside the span. */
    double f2x(double t) const;

    /** The same to the nearest pixel, halves away from zero. */
    int f2xi(double t) const;

    /** The pixel of a time, at most the width. Not limited on the left: what draws there is clipped. */
    double f2xClipped(double t) const;
    int f2xClippedI(double t) const;

    /** The pixel of the place `f` of the range `a` to `b` on a bar that shows `lo` to `hi`. */
    double f2x(double f, double a, double b, double lo, double hi) const;

    /** The pixel in which a time lies, from which what is grabbed keeps its distance. */
    int wholePixel(double t) const;

    double x2f(double x) const;

    /** Limited to the span; NaN stays what it is. */
    double clamp(double t) const;

    /** The same span seen through the window of a zoom about `t`, which keeps its place: `length` long. */
    NumRange<double> zoomedAbout(double t, double length) const;

    /** What is at a pixel. `t` is the current time, none when its marker cannot be grabbed; `tolerance` in pixels. */
    ThermHit hitTest(int x, double t, bool grabsTime, bool grabsWindow, int tolerance) const;

    bool operator==(const ThermGeometry&) const = default;

    /** The window when an edge is dragged to the time `to`: a zoom about `t`. The edge stays on its side of `t`, where
        the window is `least` long. */
    NumRange<double> draggedEdge(ThermHit edge, double to, double t, double least) const;

private:
    double place(double t) const;
};

} // namespace oribund
