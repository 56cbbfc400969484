#pragma once

#include "oribund/host/base/Export.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace oribund
{

/** Tag of ranges whose start is never above their end; constructing one from swapped ends swaps them back. */
struct Ordered {
};

/** Tag of ranges that keep their ends as given, so that a direction survives. */
struct Unordered {
};

/** A closed range of numbers or times. What a range contains does not depend on its direction. */
template <class T, class Order = Ordered>
class ORIBUND_API NumRange
{
public:
    constexpr NumRange() noexcept = default;

    constexpr NumRange(T start, T end) noexcept
        : start_(start)
        , end_(end)
    {
        if constexpr (std::is_same_v<Order, Ordered>) {
            if (end_ < start_)
                std::swap(start_, end_);
        }
    }

    constexpr T start() const noexcept { return start_; }

    constexpr T end() const noexcept { return end_; }

    constexpr T low() const noexcept { return std::min(start_, end_); }

    constexpr T high() const noexcept { return std::max(start_, end_); }

    /** End minus start: negative for an unordered range that runs downwards. */
    constexpr auto length() const noexcept { return end_ - start_; }

    constexpr bool empty() const noexcept { return start_ == end_; }

    constexpr bool contains(T value) const noexcept { return !(value < low()) && !(high() < value); }

    constexpr bool contains(const NumRange& other) const noexcept
    {
        return contains(other.start_) && contains(other.end_);
    }

    constexpr bool overlaps(const NumRange& other) const noexcept
    {
        return !(other.high() < low()) && !(high() < other.low());
    }

    /** The value of the range that is nearest to `value`. */
    constexpr T clamp(T value) const noexcept { return std::clamp(value, low(), high()); }

    constexpr bool operator==(const NumRange&) const noexcept = default;

private:
    T start_{};
    T end_{};
};

} // namespace oribund
