#include "oribund/host/base/Numeric.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string>

namespace oribund
{

namespace
{

constexpr int kMostDecimals = 15;
constexpr double kLargestPlain = 1e16;

std::string_view withoutBlanks(std::string_view text) noexcept
{
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

template <class Number>
std::optional<Number> parse(std::string_view text) noexcept
{
    text = withoutBlanks(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/** A wide text of plain characters as a narrow one; empty, which is no number, when it holds anything else. */
struct Narrowed {
    std::array<char, 512> characters;
    std::size_t size = 0;

    explicit Narrowed(std::wstring_view text) noexcept
    {
        if (text.size() > characters.size())
            return;
        for (const wchar_t c : text) {
            if (c <= 0 || c >= 0x80) {
                size = 0;
                return;
            }
            characters[size++] = static_cast<char>(c);
        }
    }

    std::string_view view() const noexcept { return {characters.data(), size}; }
};

} // namespace

int roundHalfAway(double value) noexcept
{
    constexpr double kLow = std::numeric_limits<int>::min();
    constexpr double kHigh = std::numeric_limits<int>::max();
    if (std::isnan(value))
        return 0;
    const double rounded = std::round(value);
    return rounded <= kLow    ? std::numeric_limits<int>::min()
           : rounded >= kHigh ? std::numeric_limits<int>::max()
                              : static_cast<int>(rounded);
}

std::optional<double> parseDouble(std::string_view text) noexcept
{
    const std::optional<double> number = parse<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<double> parseDouble(std::wstring_view text) noexcept
{
    return parseDouble(Narrowed(text).view());
}

std::optional<int> parseInt(std::string_view text) noexcept
{
    return parse<int>(text);
}

std::optional<int> parseInt(std::wstring_view text) noexcept
{
    return parseInt(Narrowed(text).view());
}

String formatNumber(double value, int decimals)
{
    std::array<char, 64> buffer;
    char* const first = buffer.data();
    char* const last = first + buffer.size();
    if (!(std::abs(value) < kLargestPlain))
        return String(std::string_view(first, std::to_chars(first, last, value).ptr));
    decimals = std::clamp(decimals, 0, kMostDecimals);
    const char* end = std::to_chars(first, last, value, std::chars_format::fixed, decimals).ptr;
    while (decimals > 0 && end[-1] == '0')
        --end;
    if (end[-1] == '.')
        --end;
    const std::string_view text(first, end);
    return String(text == "-0" ? std::string_view("0") : text);
}

String formatNumber(int value)
{
    return String(std::to_string(value));
}

} // namespace oribund
