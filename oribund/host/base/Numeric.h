#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

#include <cmath>
#include <optional>
#include <string_view>
#include <type_traits>

namespace oribund
{

/** How far apart two times or parameter values may be and still count as the same. */
inline constexpr double kValueTolerance = 1e-9;

/** Whether two values are the same: floating-point numbers within kValueTolerance, all else by ==. */
template <class T>
bool valEqualsVal(const T& a, const T& b) noexcept
{
    if constexpr (std::is_floating_point_v<T>)
        return a == b || std::abs(a - b) <= static_cast<T>(kValueTolerance);
    else
        return a == b;
}

/** To the nearest integer, halves away from zero; clamped to the range of int, 0 for NaN. */
ORIBUND_API int roundHalfAway(double value) noexcept;

/** An effect time brought into 0..1; a time within kValueTolerance outside stays as it is. */
constexpr double clampNormalisedTime(double fxTime) noexcept
{
    if (fxTime - 1.0 > kValueTolerance)
        fxTime = 1.0;
    if (0.0 - fxTime > kValueTolerance)
        fxTime = 0.0;
    return fxTime;
}

/**
 * The number that a text holds, blanks around it and a leading '+' allowed. Nothing when the text is anything else, or
 * the number is not finite or does not fit. The decimal separator is always '.', whatever the process's locale.
 */
ORIBUND_API std::optional<double> parseDouble(std::string_view text) noexcept;
ORIBUND_API std::optional<double> parseDouble(std::wstring_view text) noexcept;
ORIBUND_API std::optional<int> parseInt(std::string_view text) noexcept;
ORIBUND_API std::optional<int> parseInt(std::wstring_view text) noexcept;

/** Up to so many decimals (0 to 15) without trailing zeros; zero has no sign. From 1e16 on in scientific form. */
ORIBUND_API String formatNumber(double value, int decimals = 6);
ORIBUND_API String formatNumber(int value);

namespace detail
{

template <class To, class Text>
auto numberFromText(Text text) noexcept
{
    static_assert(std::is_same_v<To, double> || std::is_same_v<To, int>);
    if constexpr (std::is_same_v<To, double>)
        return parseDouble(text);
    else
        return parseInt(text);
}

} // namespace detail

/**
 * The conversion between what a widget shows and what a parameter holds:
 * - from text (String, WString, or a view of one) to double or int: an optional, empty where the text is no such
 * number;
 * - from double or int to String or WString;
 * - from double to int: rounded as by roundHalfAway(); from int to double.
 */
template <class To, class From>
auto reinterpretValType(const From& from)
{
    if constexpr (std::is_same_v<To, From>)
        return from;
    else if constexpr (std::is_same_v<To, WString>)
        return toWide(formatNumber(from));
    else if constexpr (std::is_same_v<To, String>)
        return formatNumber(from);
    else if constexpr (std::is_same_v<From, String> || std::is_same_v<From, WString>)
        return detail::numberFromText<To>(from.view());
    else if constexpr (std::is_convertible_v<From, std::string_view>)
        return detail::numberFromText<To>(std::string_view(from));
    else if constexpr (std::is_convertible_v<From, std::wstring_view>)
        return detail::numberFromText<To>(std::wstring_view(from));
    else if constexpr (std::is_same_v<To, int>)
        return roundHalfAway(static_cast<double>(from));
    else
        return static_cast<To>(from);
}

} // namespace oribund
