#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/edit/iFrameStatistics.h"

#include <vector>

namespace oribund
{

class CanvasRenderer;

/** How the colours of a picture are distributed along a strip, as a shape that stands on its bottom. Pure. */
namespace RangeHistogram
{

/**
 * The outline from the lower left corner of the strip to the lower right one. `part` is what the strip shows of the
 * axis, whose whole is 0 to 1; on a circular axis it may lie beyond. The fullest bin of the axis is as high as the
 * strip, and a bin a hundredth as full a tenth of it. Empty where nothing is counted.
 */
ORIBUND_API std::vector<XY<double>> outline(const iFrameStatistics::Histogram& histogram, const Kt::Box<double>& strip,
                                            const NumRange<double>& part);

/** Draws it over a gradient, so that it can be told on black and on white. */
ORIBUND_API void draw(CanvasRenderer& renderer, const iFrameStatistics::Histogram& histogram,
                      const Kt::Box<double>& strip, const NumRange<double>& part);

} // namespace RangeHistogram

} // namespace oribund
