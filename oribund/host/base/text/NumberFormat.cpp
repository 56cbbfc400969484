#include "oribund/host/base/text/NumberFormat.h"

#include "oribund/host/base/Numeric.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace oribund
{

namespace
{

/** One more would show what binary fractions leave behind. */
constexpr int kExchangedDigits = 15;

struct Digits {
    explicit Digits(double value)
        : end(std::to_chars(buffer.data(), buffer.data() + buffer.size(), value + 0.0, std::chars_format::general,
                            kExchangedDigits)
                  .ptr)
    {
    }

    std::string_view text() const { return {buffer.data(), end}; }

    std::array<char, 32> buffer;
    const char* end;
};

/** As it is after it has been exchanged as text, so that 49.55 looks the same wherever it comes from. */
double exchanged(double value)
{
    return parseDouble(Digits(value).text()).value_or(value);
}

/** Without zeros that say nothing. */
std::string scientificText(double value, int digits)
{
    if (value == 0.0)
        return "0";
    std::array<char, 32> buffer;
    char* const first = buffer.data();
    char* const end = std::to_chars(first, first + buffer.size(), value, std::chars_format::scientific, digits - 1).ptr;
    std::string mantissa(first, std::find(first, end, 'e'));
    int exponent = 0;
    const char* power = first + mantissa.size() + 1;
    std::from_chars(power + (*power == '+'), end, exponent);
    if (mantissa.find('.') != std::string::npos)
        mantissa.erase(mantissa.find_last_not_of('0') + 1);
    if (mantissa.back() == '.')
        mantissa.pop_back();
    return exponent == 0 ? mantissa : mantissa + "e" + std::to_string(exponent);
}

} // namespace

bool NumberFormat::isPercentage() const
{
    return factor == 100.0 || unit.view().find(L'%') != std::wstring_view::npos;
}

WString NumberFormat::textOf(double value) const
{
    const double shown = exchanged(value) * factor;
    return (significant > 0 ? toWide(scientificText(shown, significant)) : toWide(formatNumber(shown, decimals))) +
           unit;
}

NumberExpression::Result NumberFormat::valueOf(const WString& text, double now) const
{
    const double hundredPercent = isPercentage() ? 100.0 : now * factor;
    NumberExpression::Result result = NumberExpression::evaluate(text.view(), {hundredPercent, unit.view()});
    if (result.value)
        *result.value /= factor;
    return result;
}

WString NumberFormat::plain(double value)
{
    return toWide(Digits(value).text());
}

} // namespace oribund
