#include "oribund/host/base/NumberExpression.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

using namespace oribund;

namespace
{

struct Sum {
    const wchar_t* text;
    double value;
};

struct Mistake {
    std::wstring text;
    const wchar_t* problem;
};

/** Of an entry that shows pixels, in which the value is 8. */
const NumberExpression::Rules kPixels{8.0, L" px"};

} // namespace

TEST(NumberExpression, CalculatesAsOnPaper)
{
    const Sum sums[] = {
        {L"12", 12.0},
        {L" +1.5 ", 1.5},
        {L"1,5", 1.5},
        {L".5", 0.5},
        {L"5.", 5.0},
        {L"-3e2", -300.0},
        {L"2.5E-1", 0.25},
        {L"0e999", 0.0},
        {L"1e-999", 0.0},
        {L"1+2*3", 7.0},
        {L"(1+2)*3", 9.0},
        {L"10-4-3", 3.0},
        {L"24/4/2", 3.0},
        {L"2--3", 5.0},
        {L"-(2+3)", -5.0},
        {L"2*-3", -6.0},
        {L"- -4", 4.0},
        {L"1920 / 2 - ((10))", 950.0},
        {L"0.1+0.2", 0.3},
        {L"1000.1-1000", 0.1},
        {L"0.3-0.1-0.1-0.1", 0.0},
        {L"6 \u00d7 7 \u2212 1", 41.0},
        {L"9\u00f72", 4.5},
        {L"1\u00a0+\u202f1", 2.0},
        {L"120px", 120.0},
        {L"120 PX", 120.0},
        {L"(100 + 20px) px", 120.0},
        {L"50%", 4.0},
        {L"50 % + 1", 5.0},
        {L"80 * 50%", 40.0},
        {L"40 / 50%", 80.0},
        {L"-25%", -2.0},
    };
    for (const char* locale : {"C", "de_DE.UTF-8"}) {
        std::setlocale(LC_NUMERIC, locale);
        for (const Sum& sum : sums) {
            const auto result = NumberExpression::evaluate(sum.text, kPixels);
            EXPECT_EQ(result.value, sum.value) << std::string(sum.text, sum.text + std::wcslen(sum.text));
            EXPECT_STREQ(result.problem, L"");
        }
    }
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(NumberExpression::evaluate(L"50%").value, 50.0) << "where percentages are shown";
    EXPECT_EQ(NumberExpression::evaluate(L"100/2 %", {100.0, L" %"}).value, 50.0) << "the unit was there before";
    EXPECT_EQ(NumberExpression::evaluate(L"45\u00b0", {100.0, L"\u00b0"}).value, 45.0);
}

TEST(NumberExpression, SaysWhatIsWrong)
{
    constexpr const wchar_t* kNone = L"Failed to parse string";
    constexpr const wchar_t* kParenthesis = L"A parenthesis is missing";
    constexpr const wchar_t* kLarge = L"The number is too large";
    const Mistake mistakes[] = {
        {L"", kNone},
        {L"  ", kNone},
        {L"abc", kNone},
        {L"px", kNone},
        {L"12 apples", kNone},
        {L"1 2", kNone},
        {L"1,000.5", kNone},
        {L"1e", kNone},
        {L".", kNone},
        {L"2+", kNone},
        {L"*2", kNone},
        {L"()", kNone},
        {L"(2 3)", kNone},
        {L"0x10", kNone},
        {L"nan", kNone},
        {L"inf", kNone},
        {L"5%%", kNone},
        {std::wstring(L"5\0", 2), kNone},
        {L"\u0665", kNone},
        {L"1/0", L"Division by zero"},
        {L"1/(2-2)", L"Division by zero"},
        {L"(1+2", kParenthesis},
        {L"1+2)", kParenthesis},
        {L"1e999", kLarge},
        {L"1e300*1e300", kLarge},
        {L"1e308+1e308", kLarge},
        {L"1/1e-320", kLarge},
        {std::wstring(10000, L'('), L"The text is too long"},
        {std::wstring(257, L'1'), L"The text is too long"},
    };
    for (const Mistake& mistake : mistakes) {
        const auto result = NumberExpression::evaluate(mistake.text);
        const std::string text(mistake.text.begin(), mistake.text.end());
        EXPECT_FALSE(result.value) << text;
        EXPECT_STREQ(result.problem, mistake.problem) << text;
    }
    const std::wstring deep = std::wstring(127, L'(') + L"7" + std::wstring(127, L')');
    EXPECT_EQ(NumberExpression::evaluate(deep).value, 7.0);
    constexpr double kMost = std::numeric_limits<double>::max();
    EXPECT_STREQ(NumberExpression::evaluate(L"200%", {kMost, L""}).problem, kLarge);
}

TEST(NumberExpression, SumsHaveTheDigitsOfTheirParts)
{
    EXPECT_EQ(decimalSum(0.7, 0.1), 0.8);
    EXPECT_EQ(decimalSum(-1.1, 1.0), -0.1);
    EXPECT_EQ(decimalSum(1e15, 0.5), 1e15 + 0.5);
    EXPECT_EQ(decimalSum(1e-9, 1e-9), 2e-9);
    EXPECT_EQ(decimalSum(123456.789012345, 0.0), 123456.789012345);
    EXPECT_FALSE(std::signbit(decimalSum(-0.1, 0.1)));
}
