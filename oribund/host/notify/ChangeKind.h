#pragma once

namespace oribund
{

/** Where a change stands in a series such as a drag. Each series is one step for the user. */
enum class ChangeKind : unsigned {
    Start = 0,        ///< the first change of a series
    Single = 3,       ///< a change on its own
    Continuation = 4, ///< a later change of the series that a Start opened
};

/** Whether a change of this kind begins something new, and so is announced before it is made. */
constexpr bool opensChange(ChangeKind kind) noexcept
{
    return kind == ChangeKind::Start || kind == ChangeKind::Single;
}

} // namespace oribund
