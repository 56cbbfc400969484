#include "oribund/host/base/Numeric.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <utility>

using namespace oribund;

namespace
{

constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(Numeric, RefusesTextThatIsNoNumber)
{
    for (const char* text : {"", " ", "abc", "1e999", "-1e999", "12px", "nan", "inf", "-infinity", "1,5", "--1", "+-1",
                             "+", "-", ".", "1 2", "0x10", "1e", "١"}) {
        EXPECT_EQ(reinterpretValType<double>(String(text)), std::nullopt) << text;
        EXPECT_EQ(reinterpretValType<double>(toWide(text)), std::nullopt) << text;
        EXPECT_EQ(reinterpretValType<int>(String(text)), std::nullopt) << text;
    }
    for (const char* text : {"1.5", "2147483648", "-2147483649", "1e3"})
        EXPECT_EQ(reinterpretValType<int>(String(text)), std::nullopt) << text;
    // Longer than any number that a person writes.
    EXPECT_EQ(reinterpretValType<double>(WString(std::wstring(5000, L'1'))), std::nullopt);
}

TEST(Numeric, ReadsNumbersWhateverTheLocale)
{
    // Where no such locale is installed, this runs in the one that is set.
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    EXPECT_EQ(reinterpretValType<double>(L" -12.25\t"), -12.25);
    EXPECT_EQ(reinterpretValType<double>(WString(L"+7")), 7.0);
    EXPECT_EQ(reinterpretValType<double>(".5"), 0.5);
    EXPECT_EQ(reinterpretValType<double>("5."), 5.0);
    EXPECT_EQ(reinterpretValType<double>("1e3"), 1000.0);
    EXPECT_EQ(reinterpretValType<int>(L"-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(reinterpretValType<String>(0.5), "0.5");
    std::setlocale(LC_NUMERIC, "C");
}

TEST(Numeric, WritesSixDecimalsWithoutTrailingZeros)
{
    const std::pair<double, const char*> cases[] = {
        {-0.0, "0"},      {100.0, "100"},         {1.0 / 3.0, "0.333333"},
        {-2.5, "-2.5"},   {-1e-9, "0"},           {1e-6, "0.000001"},
        {0.9999999, "1"}, {-725.125, "-725.125"}, {1e15, "1000000000000000"},
        {1e16, "1e+16"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(reinterpretValType<String>(value), text);
        EXPECT_EQ(reinterpretValType<WString>(value), toWide(text));
    }
    EXPECT_EQ(formatNumber(99.96, 1), "100");
    EXPECT_EQ(formatNumber(1200.0, 0), "1200");
    EXPECT_EQ(formatNumber(-0.4, 0), "0");
    EXPECT_EQ(formatNumber(0.25, -3), "0");
    EXPECT_LE(formatNumber(-9.9e15 / 7.0, 99).size(), 40u);
}

TEST(Numeric, TextOfANumberReadsBackAsThatNumber)
{
    std::mt19937_64 random(20);
    for (int i = 0; i < 20000; ++i) {
        const double magnitude = std::pow(10.0, static_cast<double>(random() % 12) - 5.0);
        const double value = magnitude * (static_cast<double>(random() >> 11) / 4503599627370496.0 - 1.0);
        const auto read = reinterpretValType<double>(reinterpretValType<WString>(value));
        ASSERT_TRUE(read);
        ASSERT_NEAR(*read, value, 5.0001e-7 + std::abs(value) * 1e-15);
    }
    for (const double value : {1e16, -3.25e200, std::numeric_limits<double>::max()})
        EXPECT_EQ(reinterpretValType<double>(reinterpretValType<String>(value)), value);
}

TEST(Numeric, RoundsHalvesAwayFromZeroAndSaturates)
{
    EXPECT_EQ(roundHalfAway(2.5), 3);
    EXPECT_EQ(roundHalfAway(-2.5), -3);
    EXPECT_EQ(roundHalfAway(0.49999999999999994), 0);
    EXPECT_EQ(roundHalfAway(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(roundHalfAway(-kInfinity), std::numeric_limits<int>::min());
    EXPECT_EQ(roundHalfAway(std::nan("")), 0);
    EXPECT_EQ(reinterpretValType<int>(-0.5), -1);
}

TEST(Numeric, ClampsEffectTimesBeyondTheTolerance)
{
    EXPECT_EQ(clampNormalisedTime(1.000000002), 1.0);
    EXPECT_EQ(clampNormalisedTime(1.0000000005), 1.0000000005);
    EXPECT_EQ(clampNormalisedTime(-0.0000000005), -0.0000000005);
    EXPECT_EQ(clampNormalisedTime(-0.01), 0.0);
    EXPECT_EQ(clampNormalisedTime(kInfinity), 1.0);
}

TEST(Numeric, EqualityOfValuesIsTolerantForNumbersOnly)
{
    EXPECT_TRUE(valEqualsVal(0.5, 0.5 + 5e-10));
    EXPECT_FALSE(valEqualsVal(0.5, 0.5 + 2e-9));
    EXPECT_TRUE(valEqualsVal(kInfinity, kInfinity));
    EXPECT_FALSE(valEqualsVal(std::nan(""), std::nan("")));
    EXPECT_FALSE(valEqualsVal(String("1"), String("1.0")));
}
