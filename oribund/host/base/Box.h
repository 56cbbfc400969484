#pragma once

#include "oribund/host/base/XY.h"

#include <algorithm>

namespace oribund::Kt
{

/** The y axis grows downwards, as on a screen. */
struct TopDownTraits;

/** The y axis grows upwards, as in a graph: see BottomUp.h. */
struct BottomUpTraits;

template <class T, class Traits = TopDownTraits>
struct Box;

/**
 * An upright rectangle with a top-down y axis. It holds the points from `left` and `top` up to, but without, `right`
 * and `bottom`; with `right <= left` or `bottom <= top` it is empty.
 */
template <class T>
struct Box<T, TopDownTraits> {
    T left{};
    T top{};
    T right{};
    T bottom{};

    static constexpr Box fromSize(const XY<T>& topLeft, const XY<T>& size) noexcept
    {
        return {topLeft.x, topLeft.y, static_cast<T>(topLeft.x + size.x), static_cast<T>(topLeft.y + size.y)};
    }

    constexpr bool operator==(const Box&) const noexcept = default;

    constexpr T width() const noexcept { return static_cast<T>(right - left); }

    constexpr T height() const noexcept { return static_cast<T>(bottom - top); }

    constexpr XY<T> size() const noexcept { return {width(), height()}; }

    constexpr XY<T> topLeft() const noexcept { return {left, top}; }

    constexpr XY<T> centre() const noexcept
    {
        return {static_cast<T>(left + (right - left) / 2), static_cast<T>(top + (bottom - top) / 2)};
    }

    constexpr bool empty() const noexcept { return !(left < right && top < bottom); }

    constexpr bool contains(const XY<T>& p) const noexcept
    {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }

    /** Whether every point of `other` is in this; an empty box is in any. */
    constexpr bool contains(const Box& other) const noexcept
    {
        return other.empty() ||
               (other.left >= left && other.right <= right && other.top >= top && other.bottom <= bottom);
    }

    constexpr bool intersects(const Box& other) const noexcept { return !intersect(other).empty(); }

    /** The common part; an all-zero box when there is none. */
    constexpr Box intersect(const Box& other) const noexcept
    {
        const Box common{std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                         std::min(bottom, other.bottom)};
        return common.empty() ? Box() : common;
    }

    /** The smallest box around both; an empty box adds nothing. */
    constexpr Box unite(const Box& other) const noexcept
    {
        if (empty())
            return other;
        if (other.empty())
            return *this;
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }

    /** Each side moved inwards by `margin`, outwards when it is negative. */
    constexpr Box inset(T margin) const noexcept { return inset(margin, margin); }

    constexpr Box inset(T marginX, T marginY) const noexcept
    {
        return {static_cast<T>(left + marginX), static_cast<T>(top + marginY), static_cast<T>(right - marginX),
                static_cast<T>(bottom - marginY)};
    }

    constexpr Box movedBy(const XY<T>& offset) const noexcept { return fromSize(topLeft() + offset, size()); }
};

} // namespace oribund::Kt
