#pragma once

#include <compare>

namespace oribund
{

/** An angle in degrees. Whole turns count: 725 is two turns and five degrees. */
struct Angle {
    double degrees = 0.0;

    constexpr auto operator<=>(const Angle&) const noexcept = default;
};

} // namespace oribund
