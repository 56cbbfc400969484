#pragma once

namespace oribund
{

/** A pair of coordinates or extents; what they are measured in is the user's business. */
template <class T>
struct XY {
    T x{};
    T y{};

    constexpr bool operator==(const XY&) const noexcept = default;

    constexpr XY operator-() const noexcept { return {static_cast<T>(-x), static_cast<T>(-y)}; }

    constexpr XY& operator+=(const XY& b) noexcept { return *this = *this + b; }

    constexpr XY& operator-=(const XY& b) noexcept { return *this = *this - b; }

    constexpr XY& operator*=(T factor) noexcept { return *this = *this * factor; }

    friend constexpr XY operator+(const XY& a, const XY& b) noexcept
    {
        return {static_cast<T>(a.x + b.x), static_cast<T>(a.y + b.y)};
    }

    friend constexpr XY operator-(const XY& a, const XY& b) noexcept
    {
        return {static_cast<T>(a.x - b.x), static_cast<T>(a.y - b.y)};
    }

    friend constexpr XY operator*(const XY& a, T factor) noexcept
    {
        return {static_cast<T>(a.x * factor), static_cast<T>(a.y * factor)};
    }

    friend constexpr XY operator/(const XY& a, T divisor) noexcept
    {
        return {static_cast<T>(a.x / divisor), static_cast<T>(a.y / divisor)};
    }
};

} // namespace oribund
