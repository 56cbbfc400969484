#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/edit/iFrameStatistics.h"

#include <cstddef>
#include <span>
#include <vector>

namespace oribund
{

/** How the colours of a picture are distributed along a strip, as a shape that stands on its bottom. Pure. */
namespace RangeHistogram
{

/**
 * How high the shape is in each of so many columns, 0 to 1. `part` is what the strip shows of the axis, whose whole is
 * 0 to 1; on a circular axis it may lie beyond. The fullest bin of the axis is nearly as high as the strip, and one
 * that is a hundredth as full has a tenth of that. Empty where nothing is counted.
 */
ORIBUND_API std::vector<double> heights(const iFrameStatistics::Histogram& histogram, const NumRange<double>& part,
                                        std::size_t columns);

/** A picture of a gradient, of which the shape is dark with a light edge. As wide as there are columns. */
ORIBUND_API Image picture(std::span<const Colour> columns, std::span<const double> heights, int height);

} // namespace RangeHistogram

} // namespace oribund
