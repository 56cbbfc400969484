#pragma once

#include "oribund/host/base/Box.h"

namespace oribund::Kt
{

/** An upright rectangle with a bottom-up y axis: `bottom` is its smallest y, `top` its largest. */
template <class T>
struct Box<T, BottomUpTraits> {
    T left{};
    T bottom{};
    T right{};
    T top{};

    constexpr bool operator==(const Box&) const noexcept = default;

    constexpr T width() const noexcept { return static_cast<T>(right - left); }

    constexpr T height() const noexcept { return static_cast<T>(top - bottom); }

    constexpr XY<T> centre() const noexcept
    {
        return {static_cast<T>(left + (right - left) / 2), static_cast<T>(bottom + (top - bottom) / 2)};
    }

    /** Whether a point is inside or on an edge: all four belong to the box. */
    constexpr bool containsClosed(const XY<T>& p) const noexcept
    {
        return p.x >= left && p.x <= right && p.y >= bottom && p.y <= top;
    }
};

} // namespace oribund::Kt

namespace oribund
{

/** The box of a screen for one that stands `height` high from the bottom up. */
template <class T>
constexpr Kt::Box<T> toTopDown(const Kt::Box<T, Kt::BottomUpTraits>& box, T height) noexcept
{
    return {box.left, static_cast<T>(height - box.top), box.right, static_cast<T>(height - box.bottom)};
}

/** The point as seen from the bottom of what is `height` high; the same the other way round. */
template <class T>
constexpr XY<T> flipped(const XY<T>& point, T height) noexcept
{
    return {point.x, static_cast<T>(height - point.y)};
}

} // namespace oribund
