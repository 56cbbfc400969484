#include "oribund/host/base/IdStamp.h"

#include "oribund/host/base/Numeric.h"

#include <array>
#include <charconv>

namespace oribund
{

int IdStamp::compare(const IdStamp& other) const noexcept
{
    const auto order = *this <=> other;
    return order < 0 ? -1 : static_cast<int>(order > 0);
}

String IdStamp::asString() const
{
    return formatNumber(first_) + "-" + formatNumber(second_) + "-" + formatNumber(third_);
}

std::optional<IdStamp> IdStamp::fromString(std::string_view text) noexcept
{
    std::array<int, 3> parts{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0 && (at == end || *at++ != '-'))
            return std::nullopt;
        const auto [next, error] = std::from_chars(at, end, parts[i]);
        if (error != std::errc())
            return std::nullopt;
        at = next;
    }
    const IdStamp stamp(parts[0], parts[1], parts[2]);
    // A stamp has one spelling, so that texts may serve as keys: "01-2-3" and "-0-2-3" are none.
    if (at != end || stamp.asString().view() != text)
        return std::nullopt;
    return stamp;
}

std::size_t IdStamp::hash() const noexcept
{
    // Stamps differ mostly in small numbers, so each is spread over the word before the next is added.
    constexpr std::size_t kSpread = static_cast<std::size_t>(0x9e3779b97f4a7c15ull);
    std::size_t h = 0;
    for (const int part : {first_, second_, third_}) {
        h = (h ^ static_cast<unsigned>(part)) * kSpread;
        h ^= h >> (sizeof(h) * 4);
    }
    return h;
}

} // namespace oribund
