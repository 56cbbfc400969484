#pragma once

#include "oribund/colour/RangeAxis.h"
#include "oribund/host/base/BottomUp.h"
#include "oribund/host/base/Export.h"

#include <optional>

namespace oribund
{

/**
 * Where the four handles of a soft range stand on a strip: those of the soft edges at its bottom, those of the band at
 * its top. In the coordinates of the strip, bottom-up, in logical pixels. A plain value.
 */
class ORIBUND_API RangeGeometry
{
public:
    using Box = Kt::Box<double, Kt::BottomUpTraits>;

    static constexpr int kNone = -1;

    /** `range` in ascending order. */
    RangeGeometry(const RangeAxis& axis, const ColourData& range, const XY<int>& size);

    /** The side of a handle's box. */
    static int nobbleSize();
    /** Above and below it a strip that is very low has no sections. */
    static int sectionMargin();

    Box nobbleArea(std::size_t handle) const;

    /** The middle of a handle. */
    double nobbleX(std::size_t handle) const { return nobbleArea(handle).centre().x; }

    /** The first handle whose box holds the point, edges included; kNone where there is none. */
    int nobbleAt(const XY<double>& at) const;

    /** The section at a point that is on no handle; kNone on a strip too low to tell. */
    int sectionAt(const XY<double>& at) const;

    /** What a press at that point takes hold of. */
    std::optional<RangePart> partAt(const XY<double>& at) const;

    /** How far a move by so many pixels goes along the axis. */
    double distance(double pixels) const;

    /** The part of the strip that the handles' middles can reach, over its whole height. */
    Box track() const;

private:
    RangeAxis axis_;
    ColourData range_;
    XY<int> size_;
};

} // namespace oribund
