#pragma once

#include "oribund/host/base/Export.h"

#include <compare>

namespace oribund
{

/** A time inside an effect: 0 at the effect's start, 1 at its end. */
struct ORIBUND_API FXTime {
    double normalised = 0.0;

    constexpr auto operator<=>(const FXTime&) const noexcept = default;

    friend constexpr FXTime operator+(FXTime a, FXTime b) noexcept { return {a.normalised + b.normalised}; }

    friend constexpr FXTime operator-(FXTime a, FXTime b) noexcept { return {a.normalised - b.normalised}; }
};

} // namespace oribund
