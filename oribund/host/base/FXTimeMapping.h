#pragma once

#include "oribund/host/base/FXTime.h"
#include "oribund/host/base/NumRange.h"

namespace oribund
{

/** An edit time as a time inside an effect that runs over `region` of the edit; not limited. 0 for an empty region. */
constexpr FXTime toFXTime(const NumRange<double>& region, double editTime) noexcept
{
    const double length = region.length();
    return FXTime{length > 0.0 ? (editTime - region.start()) / length : 0.0};
}

constexpr double toEditTime(const NumRange<double>& region, FXTime time) noexcept
{
    return region.start() + time.normalised * region.length();
}

} // namespace oribund
