#pragma once

#include "oribund/host/base/Export.h"

#include <cmath>
#include <compare>

namespace oribund
{

/** In degrees. */
inline constexpr double kFullTurn = 360.0;

/** An angle in degrees. Whole turns count: 725 is two turns and five degrees. */
struct ORIBUND_API Angle {
    double degrees = 0.0;

    /** The part that is no whole turn, in degrees, with the angle's sign. */
    double withinTurn() const noexcept { return std::fmod(degrees, kFullTurn); }

    /** The whole turns; negative ones of a negative angle. */
    double wholeTurns() const noexcept { return std::round((degrees - withinTurn()) / kFullTurn); }

    constexpr auto operator<=>(const Angle&) const noexcept = default;
};

} // namespace oribund
