#pragma once

#include "oribund/host/base/Export.h"

#include <cstddef>

namespace oribund
{

/** A point or offset of two doubles, as a position parameter carries it; [0] is x, [1] is y. */
struct ORIBUND_API Vector2d {
    double x = 0.0;
    double y = 0.0;

    constexpr double& operator[](std::size_t i) noexcept { return i == 0 ? x : y; }

    constexpr double operator[](std::size_t i) const noexcept { return i == 0 ? x : y; }

    static constexpr std::size_t size() noexcept { return 2; }

    constexpr bool operator==(const Vector2d&) const noexcept = default;

    constexpr Vector2d operator-() const noexcept { return {-x, -y}; }

    friend constexpr Vector2d operator+(const Vector2d& a, const Vector2d& b) noexcept
    {
        return {a.x + b.x, a.y + b.y};
    }

    friend constexpr Vector2d operator-(const Vector2d& a, const Vector2d& b) noexcept
    {
        return {a.x - b.x, a.y - b.y};
    }

    friend constexpr Vector2d operator*(const Vector2d& a, double f) noexcept { return {a.x * f, a.y * f}; }
};

} // namespace oribund
