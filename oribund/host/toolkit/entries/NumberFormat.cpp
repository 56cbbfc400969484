#include "oribund/host/toolkit/entries/NumberFormat.h"

#include "oribund/host/base/Numeric.h"

#include <array>
#include <charconv>
#include <string_view>

namespace oribund
{

namespace
{

/** One more would show what binary fractions leave behind. */
constexpr int kDigits = 15;

} // namespace

bool NumberFormat::isPercentage() const
{
    return factor == 100.0 || unit.view().find(L'%') != std::wstring_view::npos;
}

WString NumberFormat::textOf(double value) const
{
    return toWide(formatNumber(value * factor, decimals)) + unit;
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
    std::array<char, 32> buffer;
    char* const first = buffer.data();
    const auto written = std::to_chars(first, first + buffer.size(), value + 0.0, std::chars_format::general, kDigits);
    return toWide(std::string_view(first, written.ptr));
}

} // namespace oribund
