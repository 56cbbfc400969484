#include "oribund/host/base/text/NumberExpression.h"

#include "oribund/host/base/LightweightString.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

using Problem = NumberExpression::Problem;

constexpr wchar_t kEnd = 0;

/** What a double tells apart, in decimal digits. */
constexpr int kDigits = 15;

bool isBlank(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == 0xa0 || c == 0x2009 || c == 0x202f;
}

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

/** The operator that a character stands for, whatever its form. */
wchar_t plainForm(wchar_t c)
{
    switch (c) {
    case 0x2212:
        return L'-';
    case 0xd7:
    case 0xb7:
        return L'*';
    case 0xf7:
        return L'/';
    default:
        return c;
    }
}

std::wstring_view trimmed(std::wstring_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isSameWithoutCase(wchar_t a, wchar_t b)
{
    return foldCase(a) == foldCase(b);
}

/** Walks once through a text. After the first problem everything is 0 and nothing is taken any more. */
class Evaluation
{
public:
    Evaluation(std::wstring_view text, const NumberExpression::Rules& rules)
        : rest_(trimmed(text))
        , unit_(trimmed(rules.unit))
        , hundredPercent_(rules.hundredPercent)
    {
        // Also where the unit is the percent sign: it stood there when the user changed the number before it.
        if (unit_.size() <= rest_.size() && std::equal(unit_.rbegin(), unit_.rend(), rest_.rbegin(), isSameWithoutCase))
            rest_.remove_suffix(unit_.size());
    }

    NumberExpression::Result run()
    {
        const double value = sum();
        next();
        if (!rest_.empty())
            fail(rest_.front() == L')' ? Problem::MissingParenthesis : Problem::NoNumber);
        if (hasFailed())
            return {std::nullopt, problem_};
        return {value};
    }

private:
    double sum()
    {
        double value = product();
        for (wchar_t c = next(); c == L'+' || c == L'-'; c = next()) {
            rest_.remove_prefix(1);
            const double right = product();
            value = checked(decimalSum(value, c == L'+' ? right : -right));
        }
        return value;
    }

    double product()
    {
        double value = factor(false);
        for (wchar_t c = next(); c == L'*' || c == L'/'; c = next()) {
            rest_.remove_prefix(1);
            const double right = factor(true);
            if (c == L'/' && right == 0.0)
                return fail(Problem::DivisionByZero);
            value = checked(c == L'*' ? value * right : value / right);
        }
        return value;
    }

    double factor(bool scales)
    {
        bool negative = false;
        for (wchar_t c = next(); c == L'+' || c == L'-'; c = next()) {
            negative = negative != (c == L'-');
            rest_.remove_prefix(1);
        }
        double value = take(L'(') ? inParentheses() : number();
        if (take(L'%'))
            value = checked(value * (scales ? 1.0 : hundredPercent_) / 100.0);
        else
            skipUnit();
        return negative ? -value : value;
    }

    double inParentheses()
    {
        const double value = sum();
        return take(L')') ? value : fail(next() == kEnd ? Problem::MissingParenthesis : Problem::NoNumber);
    }

    double number()
    {
        next();
        std::array<char, NumberExpression::kMaxLength> token;
        char* end = token.data();
        const char* const first = end;
        const int whole = takeDigits(end);
        if (whole + takeFraction(end) == 0)
            return fail(Problem::NoNumber);
        const bool isSmall = takeExponent(end);
        double value = 0.0;
        if (std::from_chars(first, end, value).ec == std::errc::result_out_of_range)
            return isSmall ? 0.0 : fail(Problem::TooLarge);
        return checked(value);
    }

    int takeDigits(char*& end)
    {
        int count = 0;
        for (; !rest_.empty() && isDigit(rest_.front()); ++count)
            moveTo(end);
        return count;
    }

    int takeFraction(char*& end)
    {
        if (rest_.empty() || (rest_.front() != L'.' && rest_.front() != L','))
            return 0;
        rest_.remove_prefix(1);
        *end++ = '.';
        return takeDigits(end);
    }

    /** Leaves alone what only looks like the start of one. True when it is negative. */
    bool takeExponent(char*& end)
    {
        const auto at = [this](std::size_t i) { return i < rest_.size() ? plainForm(rest_[i]) : kEnd; };
        if (at(0) != L'e' && at(0) != L'E')
            return false;
        const bool isSigned = at(1) == L'+' || at(1) == L'-';
        if (!isDigit(at(isSigned ? 2 : 1)))
            return false;
        const bool negative = at(1) == L'-';
        moveTo(end);
        if (isSigned)
            moveTo(end);
        takeDigits(end);
        return negative;
    }

    void moveTo(char*& end)
    {
        *end++ = static_cast<char>(plainForm(rest_.front()));
        rest_.remove_prefix(1);
    }

    /** The next character that is no blank, as an operator's plain form. */
    wchar_t next()
    {
        while (!rest_.empty() && isBlank(rest_.front()))
            rest_.remove_prefix(1);
        return rest_.empty() || hasFailed() ? kEnd : plainForm(rest_.front());
    }

    bool take(wchar_t wanted)
    {
        const bool there = next() == wanted;
        if (there)
            rest_.remove_prefix(1);
        return there;
    }

    void skipUnit()
    {
        next();
        if (unit_.size() <= rest_.size() && std::equal(unit_.begin(), unit_.end(), rest_.begin(), isSameWithoutCase))
            rest_.remove_prefix(unit_.size());
    }

    double checked(double value) { return std::isfinite(value) ? value : fail(Problem::TooLarge); }

    bool hasFailed() const { return problem_ != Problem::None; }

    double fail(Problem problem)
    {
        if (!hasFailed())
            problem_ = problem;
        return 0.0;
    }

    std::wstring_view rest_;
    std::wstring_view unit_;
    double hundredPercent_;
    Problem problem_ = Problem::None;
};

} // namespace

NumberExpression::Result NumberExpression::evaluate(std::wstring_view text, const Rules& rules)
{
    if (text.size() > kMaxLength)
        return {std::nullopt, Problem::TooLong};
    return Evaluation(text, rules).run();
}

double decimalSum(double a, double b) noexcept
{
    const double sum = a + b;
    const double larger = std::max(std::abs(a), std::abs(b));
    constexpr double kSmallest = 1e-20;
    constexpr double kLargest = 1e15;
    if (!(larger > kSmallest && larger < kLargest))
        return sum;
    // A sum is no more exact than its larger part.
    const int places = std::max(0, kDigits - 1 - static_cast<int>(std::floor(std::log10(larger))));
    std::array<char, 64> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), sum, std::chars_format::fixed, places);
    double decimal = sum;
    std::from_chars(text.data(), written.ptr, decimal);
    return decimal + 0.0; // no negative zero
}

} // namespace oribund
