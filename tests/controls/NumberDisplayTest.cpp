#include "tests/controls/RowSupport.h"

#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/effects/params/ParamText.h"

#include <limits>

namespace oribund
{
namespace
{

constexpr double kNone = std::numeric_limits<double>::infinity();

class Display : public test::RowTest
{
};

TEST_F(Display, NormalisedNumbersAreShownInPerCentUnlessTheirFlagsSayOtherwise)
{
    const auto percent = [&](double low, double high, unsigned flags = 0) {
        return KeyframeFloatCtrlsBase::usePercentageDisplay(addLimited(0.0, low, high, flags).get());
    };
    EXPECT_TRUE(percent(0.0, 1.0));
    EXPECT_TRUE(percent(-1.0, 1.0));
    EXPECT_FALSE(percent(0.0, 1.0, ParamDisplay::kPlainNumber));
    EXPECT_FALSE(percent(0.0, 2.0));
    EXPECT_TRUE(percent(0.0, 2.0, ParamDisplay::kPercentage));
    EXPECT_FALSE(percent(-0.5, 1.0));
    EXPECT_FALSE(KeyframeFloatCtrlsBase::usePercentageDisplay(nullptr));
}

TEST_F(Display, DecimalsStepAndSliderFollowFromTheRange)
{
    struct Case {
        double low, high, standard;
        int decimals;
        double step;
        NumRange<double> slider;
    };

    const Case cases[] = {
        {0.0, 1.0, 0.5, 3, 0.01, {0.0, 1.0}},
        {0.0, 100.0, 0.0, 1, 1.0, {0.0, 100.0}},
        {20.0, 20000.0, 1000.0, 0, 100.0, {20.0, 20000.0}},
        {-kNone, kNone, 0.0, 1, 1.0, {-100.0, 100.0}},
        {0.0, kNone, 50.0, 0, 10.0, {0.0, 1000.0}},
        {-kNone, 10.0, 0.0, 0, 10.0, {-990.0, 10.0}},
        {3.0, 3.0, 3.0, 15, 1e-14, {3.0, 3.0}},
    };
    for (const Case& one : cases) {
        const NumberDisplay display(one.low, one.high, one.standard, {}, false);
        EXPECT_EQ(display.format.decimals, one.decimals) << one.low << " to " << one.high;
        EXPECT_DOUBLE_EQ(display.step, one.step) << one.low << " to " << one.high;
        EXPECT_EQ(display.slider.start(), one.slider.start());
        EXPECT_EQ(display.slider.end(), one.slider.end());
    }
    EXPECT_EQ(NumberDisplay(0.0, 100.0, 0.0, L"px", false).format.textOf(2.26), L"2.3 px");
    EXPECT_EQ(NumberDisplay(0.0, 100.0, 0.0, L"frames", false).format.textOf(2.0), L"2");
    EXPECT_EQ(NumberDisplay(0.0, 1.0, 0.0, {}, true, 2).format.textOf(0.12345), L"12.35 %");
}

TEST_F(Display, SmallRangesShowEnoughDigitsToTellTheirValuesApart)
{
    for (const double high : {1e-4, 5e-6, 1e-6, 1e-9}) {
        const NumberFormat format = NumberDisplay(0.0, high, 0.0, L"s", false).format;
        WString last;
        for (int i = 0; i < 1000; i += 3) {
            const double value = high * i / 1000;
            const WString text = format.textOf(value);
            EXPECT_NE(text, last) << value;
            EXPECT_LE(text.size(), 11u) << toUTF8(text).c_str() << " has room in an entry";
            EXPECT_NEAR(format.valueOf(text, 0.0).value.value_or(-1.0), value, high / 1000) << toUTF8(text).c_str();
            last = text;
        }
    }
    EXPECT_EQ(NumberDisplay(0.0, 1e-6, 0.0, {}, false).format.textOf(1.25e-7), L"1.25e-7");
    EXPECT_EQ(NumberDisplay(0.0, 1e-6, 0.0, {}, false).format.textOf(0.0), L"0");
    EXPECT_EQ(NumberDisplay(1.0, 1.00001, 1.0, {}, false).format.textOf(1.00000125), L"1.00000125");
}

TEST_F(Display, ValuesAreTextsOfTheirType)
{
    const auto turning = addLimited(Angle{0.0}, Angle{-3600.0}, Angle{3600.0});
    EXPECT_EQ(valueText(*turning, Angle{-725.5}), L"-2\u00d7 -5.5\u00b0");
    EXPECT_EQ(valueText(*turning, Angle{90.0}), L"90\u00b0");
    EXPECT_EQ(valueText(*addLimited(Angle{0.0}, Angle{0.0}, Angle{360.0}), Angle{360.0}), L"0\u00b0") << "as the row";
    EXPECT_EQ(valueText(*turning, 90.0), L"") << "a number is no angle";
    const auto colour = addLimited(ColourData{}, ColourData{}, ColourData{{1, 1, 1, 1}});
    EXPECT_EQ(valueText(*colour, ColourData{{1.0, 0.5, 0.0, 0.25}}), L"#ff8000 25 %");
    const auto range = addLimited(ColourData{}, ColourData{}, ColourData{{1, 1, 1, 1}}, ParamDisplay::kColourRange);
    EXPECT_EQ(valueText(*range, ColourData{{1.0, 0.5, 0.0, 0.25}}), L"100 %, 50 %, 0 %, 25 %");
    constexpr double kFar = 3600.0;
    const ColourData far{{kFar, kFar, kFar, kFar}};
    const auto hues =
        addLimited(ColourData{}, ColourData{{-kFar, -kFar, -kFar, -kFar}}, far, ParamDisplay::kColourRange);
    EXPECT_EQ(valueText(*hues, ColourData{{-20.04, 0.0, 20.0, 400.0}}), L"340\u00b0, 0\u00b0, 20\u00b0, 40\u00b0");
    const auto lift = addLimited(ColourData{}, ColourData{}, ColourData{{1, 1, 1, 1}}, ParamDisplay::kColourOffset);
    EXPECT_EQ(valueText(*lift, ColourData{{0.25, 0.5, 0.0, 1.0}}), L"0.25, 0.5, 0");
}

TEST_F(Display, PlacesStepByAThousandthOfTheFrame)
{
    const Vector2d centre{0.5, 0.5};
    const auto parts = addParam(centre);
    const NumberDisplay display = NumberDisplay::of(*parts, 1);
    EXPECT_EQ(display.step, 0.001);
    EXPECT_EQ(display.slider, (NumRange<double>(-1.0, 2.0)));
    EXPECT_EQ(display.format.decimals, 4) << "a tenth of a step is seen";
    EXPECT_EQ(NumberDisplay::of(*addLimited(centre, Vector2d{0.0, 0.0}, Vector2d{1.0, 1.0}), 0).slider,
              (NumRange<double>(0.0, 1.0)));
    const auto withUnit = [&](const wchar_t* unit, unsigned flags) {
        ParamInfo info;
        info.unitText = unit;
        info.displayFlags = flags;
        return Kt::makePtr<EffectValParam<Vector2d>>(info, Vector2d{});
    };
    EXPECT_EQ(NumberDisplay::of(*withUnit(L"px", 0), 0).step, 1.0);
    EXPECT_EQ(pointUnitOf(*withUnit(L"px", 0)), PointUnit::FramePixels);
    EXPECT_EQ(pointUnitOf(*withUnit(L"%", 0)), PointUnit::None);
    EXPECT_EQ(pointUnitOf(*withUnit(L"", ParamDisplay::kPlainNumber)), PointUnit::None);
}

TEST_F(Display, TooltipTellsNameDefaultAndRange)
{
    EXPECT_EQ(paramTooltip(*addLimited(0.5, 0.0, 1.0)), L"Size\nDefault: 50 %\nRange: 0 % to 100 %");
    ParamInfo info;
    info.description = UIString(L"Size");
    info.help = L"How large it is.";
    EXPECT_EQ(paramTooltip(EffectValParam<double>(info, 0.5, 0.0, 1.0)),
              L"Size\nHow large it is.\nDefault: 50 %\nRange: 0 % to 100 %");
    EXPECT_EQ(paramTooltip(*addLimited(Angle{90.0}, Angle{0.0}, Angle{kNone})),
              L"Size\nDefault: 90\u00b0\nRange: from 0\u00b0");
    EXPECT_EQ(paramTooltip(*addLimited(Vector2d{1.0, 2.0}, Vector2d{0.0, -kNone}, Vector2d{4.0, 5.0})),
              L"Size\nDefault: 1, 2\nRange of X: 0 to 4\nRange of Y: up to 5");
}

} // namespace
} // namespace oribund
