#include "oribund/host/base/text/NumberExpression.h"
#include "oribund/host/base/Numeric.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

using namespace oribund;

namespace
{

using Problem = NumberExpression::Problem;

/** Of an entry that shows pixels, in which the value is 8. */
const NumberExpression::Rules kPixels{8.0, L" px"};

} // namespace

TEST(NumberExpression, CalculatesAsOnPaper)
{
    for (const char* locale : {"C", "de_DE.UTF-8"}) {
        std::setlocale(LC_NUMERIC, locale);
        for (const std::wstring sum : {L" +1.5 = 1.5",
                                       L"1,5 = 1.5",
                                       L".5 = 0.5",
                                       L"5. = 5",
                                       L"-3e2 = -300",
                                       L"2.5E-1 = 0.25",
                                       L"0e999 = 0",
                                       L"1e-999 = 0",
                                       L"1+2*3 = 7",
                                       L"(1+2)*3 = 9",
                                       L"10-4-3 = 3",
                                       L"24/4/2 = 3",
                                       L"2--3 = 5",
                                       L"-(2+3) = -5",
                                       L"2*-3 = -6",
                                       L"- -4 = 4",
                                       L"1920 / 2 - ((10)) = 950",
                                       L"0.1+0.2 = 0.3",
                                       L"1000.1-1000 = 0.1",
                                       L"0.3-0.1-0.1-0.1 = 0",
                                       L"6 \u00d7 7 \u2212 1 = 41",
                                       L"9\u00f72 = 4.5",
                                       L"1\u00a0+\u202f1 = 2",
                                       L"120px = 120",
                                       L"(100 + 20px) PX = 120",
                                       L"50% = 4",
                                       L"50 % + 1 = 5",
                                       L"80 * 50% = 40",
                                       L"40 / 50% = 80",
                                       L"-25% = -2"}) {
            const std::size_t equals = sum.find(L" = ");
            const auto result = NumberExpression::evaluate(sum.substr(0, equals), kPixels);
            EXPECT_EQ(result.value, reinterpretValType<double>(WString(sum.substr(equals + 3)))) << toUTF8(sum).c_str();
            EXPECT_EQ(result.problem, Problem::None);
        }
    }
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(NumberExpression::evaluate(L"50%").value, 50.0) << "where percentages are shown";
    EXPECT_EQ(NumberExpression::evaluate(L"100/2 %", {100.0, L" %"}).value, 50.0) << "the unit was there before";
    EXPECT_EQ(NumberExpression::evaluate(L"45\u00b0", {100.0, L"\u00b0"}).value, 45.0);
}

TEST(NumberExpression, SaysWhatIsWrong)
{
    const auto fails = [](std::initializer_list<std::wstring> texts, Problem problem) {
        for (const std::wstring& text : texts) {
            const auto result = NumberExpression::evaluate(text);
            EXPECT_FALSE(result.value) << toUTF8(text).c_str();
            EXPECT_EQ(result.problem, problem) << toUTF8(text).c_str();
        }
    };
    fails({L"", L"  ", L"px", L"12 apples", L"1 2", L"1,000.5", L"1e", L".", L"2+", L"*2", L"()", L"(2 3)", L"0x10",
           L"nan", L"inf", L"5%%", std::wstring(L"5\0", 2), L"\u0665"},
          Problem::NoNumber);
    fails({L"1/0", L"1/(2-2)"}, Problem::DivisionByZero);
    fails({L"(1+2", L"1+2)"}, Problem::MissingParenthesis);
    fails({L"1e999", L"1e300*1e300", L"1e308+1e308", L"1/1e-320"}, Problem::TooLarge);
    fails({std::wstring(10000, L'('), std::wstring(257, L'1')}, Problem::TooLong);
    const std::wstring deep = std::wstring(127, L'(') + L"7" + std::wstring(127, L')');
    EXPECT_EQ(NumberExpression::evaluate(deep).value, 7.0);
    constexpr double kMost = std::numeric_limits<double>::max();
    EXPECT_EQ(NumberExpression::evaluate(L"200%", {kMost, L""}).problem, Problem::TooLarge);
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
