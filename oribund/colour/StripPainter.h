#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/edit/iFrameStatistics.h"

#include <cstddef>
#include <vector>

namespace oribund
{

class CanvasRenderer;

/**
 * Paints the strip of one axis: its gradient in one-pixel columns or, where the colours of the picture are known, a
 * picture of both, which is kept as long as nothing of it changes.
 */
class ORIBUND_API StripPainter
{
public:
    explicit StripPainter(ColourAxis axis)
        : axis_(axis)
    {
    }

    /** `hue` is the one in the middle of a strip of hues, or that of a strip of saturations. `histogram` may be null.
     */
    void draw(CanvasRenderer& renderer, const Kt::Box<double>& strip, double hue,
              const iFrameStatistics::Histogram* histogram);

private:
    std::vector<Colour> gradient(std::size_t columns) const;
    NumRange<double> part() const;

    ColourAxis axis_;
    double hue_ = 0.0;
    iFrameStatistics::Histogram counted_{};
    Image picture_; ///< of the last hue and counts
};

} // namespace oribund
