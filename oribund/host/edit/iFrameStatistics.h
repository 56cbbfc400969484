#pragma once

#include "oribund/host/base/IdStamp.h"
#include "oribund/host/notify/Notifier.h"

#include <array>
#include <cstddef>

namespace oribund
{

/** What of a picture's colours is counted; how each is measured stands in HueSatLum. */
enum class ColourAxis { Hue, Saturation, Luminance };

/**
 * How the colours that an effect gets are distributed, at the viewer's current time. A viewer may offer it; panels draw
 * it behind the ranges that select by colour. User-interface thread only.
 */
class iFrameStatistics
{
public:
    static constexpr std::size_t kBins = 256;

    /**
     * How many pixels fall into each part of an axis, whatever the unit: they are compared with each other. Saturation
     * and luminance from 0 to 1, hue from 0 to 360 degrees; a grey has no hue, and counts in no part of it.
     */
    using Histogram = std::array<float, kBins>;

    /**
     * Of the effect's input: the picture without this effect and those after it. Null while it is not known, which must
     * not take long to find out: asking has it worked out, and changes() tells. Valid until the next change.
     */
    virtual const Histogram* histogram(const IdStamp& effect, ColourAxis axis) = 0;

    /** Tells that a histogram is another now: those shown have to be asked for again. */
    virtual Notifier<iFrameStatistics>& changes() = 0;

protected:
    ~iFrameStatistics() = default;
};

} // namespace oribund
