#pragma once

#include "oribund/host/base/Export.h"

#include <compare>

namespace oribund
{

/** An angle in degrees. Whole turns count: 725 is two turns and five degrees. */
struct ORIBUND_API Angle {
    double degrees = 0.0;

    constexpr auto operator<=>(const Angle&) const noexcept = default;
};

} // namespace oribund
