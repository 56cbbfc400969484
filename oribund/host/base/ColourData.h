#pragma once

#include "oribund/host/base/Export.h"

#include <array>
#include <cstddef>

namespace oribund
{

/** The value of a colour parameter or of a soft range: four doubles, whose meaning the parameter knows. */
struct ORIBUND_API ColourData {
    std::array<double, 4> values{};

    constexpr double& operator[](std::size_t i) noexcept { return values[i]; }

    constexpr double operator[](std::size_t i) const noexcept { return values[i]; }

    /** By index, from 0 to 3. */
    constexpr double getComponent(std::size_t i) const noexcept { return values[i]; }

    constexpr void setComponent(std::size_t i, double value) noexcept { values[i] = value; }

    static constexpr std::size_t size() noexcept { return 4; }

    constexpr bool operator==(const ColourData&) const noexcept = default;
};

} // namespace oribund
