#pragma once

#include "oribund/host/base/Export.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace oribund
{

/**
 * What a person types where a number is wanted: a number, or a small calculation with + - * / and parentheses.
 *
 * Numbers have a decimal point or comma and perhaps an exponent, but nothing between their digits; blanks may stand
 * around them. Multiplication goes before addition; signs may come in front of everything. The signs that word
 * processors write for minus, times and divided by are known too. The process's locale does not matter.
 */
class ORIBUND_API NumberExpression
{
public:
    /** Longer texts are refused, which also limits how deep parentheses can nest. */
    static constexpr std::size_t kMaxLength = 256;

    /** Why a text is no number. */
    enum class Problem { None, NoNumber, DivisionByZero, MissingParenthesis, TooLarge, TooLong };

    /** What texts mean in one entry. */
    struct Rules {
        /** What "100%" is. Behind * and / a percentage is a plain fraction: "80 * 50%" is 40. */
        double hundredPercent = 100.0;
        /** Means nothing behind a number or a parenthesis, and "%" nothing at the end, if it is that. */
        std::wstring_view unit;
    };

    struct Result {
        /** Always finite; empty when the text has none. */
        std::optional<double> value;
        /** Then says why. */
        Problem problem = Problem::None;
    };

    static Result evaluate(std::wstring_view text, const Rules& rules);

    static Result evaluate(std::wstring_view text) { return evaluate(text, Rules()); }
};

/** The sum as a person would write it: without the digits that binary fractions leave behind, so 0.1 + 0.2 is 0.3. */
ORIBUND_API double decimalSum(double a, double b) noexcept;

} // namespace oribund
