#include "oribund/colour/RangeGeometry.h"

#include "oribund/host/canvas/UifStd.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

RangeGeometry::RangeGeometry(const RangeAxis& axis, const ColourData& range, const XY<int>& size)
    : axis_(axis)
    , range_(range)
    , size_(size)
{
}

int RangeGeometry::nobbleSize()
{
    // Odd, so that it points to the middle of a pixel.
    return UifStd::getControlHeight() / 2 | 1;
}

int RangeGeometry::sectionMargin()
{
    return UifStd::getWidgetGap();
}

RangeGeometry::Box RangeGeometry::nobbleArea(std::size_t handle) const
{
    const double side = nobbleSize();
    const double left = std::round(axis_.fractionOf(range_, handle) * std::max(0.0, size_.x - side));
    const bool isOfBand = handle == 1 || handle == 2;
    const double bottom = isOfBand ? size_.y - side : 0.0;
    return {left, bottom, left + side, bottom + side};
}

int RangeGeometry::nobbleAt(const XY<double>& at) const
{
    for (std::size_t i = 0; i < ColourData::size(); ++i)
        if (nobbleArea(i).containsClosed(at))
            return static_cast<int>(i);
    return kNone;
}

int RangeGeometry::sectionAt(const XY<double>& at) const
{
    // True only where the two margins overlap.
    if (at.y <= sectionMargin() && at.y >= size_.y - sectionMargin())
        return kNone;
    if (at.x < nobbleX(1))
        return 0;
    return at.x > nobbleX(2) ? 2 : 1;
}

std::optional<RangePart> RangeGeometry::partAt(const XY<double>& at) const
{
    if (const int handle = nobbleAt(at); handle != kNone)
        return RangePart::handle(static_cast<std::size_t>(handle));
    const int section = sectionAt(at);
    return section == kNone ? std::nullopt : std::optional(RangePart::section(section));
}

double RangeGeometry::distance(double pixels) const
{
    return size_.x > 0 ? pixels / size_.x * axis_.span : 0.0;
}

RangeGeometry::Box RangeGeometry::track() const
{
    const double half = nobbleSize() / 2.0;
    return {half, 0.0, std::max(half, size_.x - half), static_cast<double>(size_.y)};
}

} // namespace oribund
