#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

#include <compare>
#include <cstddef>
#include <optional>

namespace oribund
{

/** Identifier of an object in the edit model: three integers, ordered one after the other. */
class ORIBUND_API IdStamp
{
public:
    /** The invalid stamp, which identifies nothing. */
    constexpr IdStamp() noexcept = default;

    constexpr IdStamp(int first, int second, int third) noexcept
        : first_(first)
        , second_(second)
        , third_(third)
    {
    }

    /** The stamp with which a change says that it concerns every object. */
    static constexpr IdStamp wildcard() noexcept { return {999, 999, 999}; }

    constexpr int first() const noexcept { return first_; }

    constexpr int second() const noexcept { return second_; }

    constexpr int third() const noexcept { return third_; }

    constexpr bool valid() const noexcept { return *this != IdStamp(); }

    constexpr bool isWildcard() const noexcept { return *this == wildcard(); }

    /** Negative, zero or positive as this sorts before, with or after `other`. */
    int compare(const IdStamp& other) const noexcept;

    constexpr auto operator<=>(const IdStamp&) const noexcept = default;

    /** "first-second-third"; fromString() reads it back. */
    String asString() const;
    /** Nothing unless `text` is exactly what asString() writes. */
    static std::optional<IdStamp> fromString(std::string_view text) noexcept;

    std::size_t hash() const noexcept;

private:
    int first_ = 0;
    int second_ = 0;
    int third_ = 0;
};

} // namespace oribund

template <>
struct std::hash<oribund::IdStamp> {
    std::size_t operator()(const oribund::IdStamp& id) const noexcept { return id.hash(); }
};
