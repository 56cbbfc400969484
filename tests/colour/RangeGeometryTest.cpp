#include "oribund/colour/RangeGeometry.h"
#include "oribund/colour/ColEyeDropBase.h"
#include "oribund/colour/ColourOffset.h"
#include "oribund/colour/RangeHistogram.h"
#include "oribund/host/base/HueSatLum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace oribund
{
namespace
{

constexpr RangeAxis kUnit{1.0, 0.0};
constexpr RangeAxis kHue{180.0, 360.0};
constexpr XY<int> kSize{211, 30};

ColourData range(double a, double b, double c, double d)
{
    return {{a, b, c, d}};
}

void expectNear(const ColourData& is, const ColourData& wanted)
{
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(is[i], wanted[i], 1e-9) << "component " << i;
}

TEST(RangeGeometry, HandlesStandWhereTheirComponentsAre)
{
    const double side = RangeGeometry::nobbleSize();
    const double travel = kSize.x - side;
    const RangeGeometry plain(kUnit, range(0.0, 0.25, 0.5, 1.0), kSize);
    EXPECT_EQ(plain.nobbleArea(0), (RangeGeometry::Box{0.0, 0.0, side, side}));
    EXPECT_EQ(plain.nobbleArea(1).left, std::round(0.25 * travel));
    EXPECT_EQ(plain.nobbleArea(2).top, 30.0) << "those of the band are at the top";
    EXPECT_EQ(plain.nobbleArea(3).left, travel);
    const ColourData straddling = kHue.ascending(range(350.0, 355.0, 5.0, 10.0));
    EXPECT_EQ(straddling, range(350.0, 355.0, 365.0, 370.0));
    const RangeGeometry circular(kHue, straddling, kSize);
    EXPECT_EQ(circular.nobbleArea(0).left + circular.nobbleArea(3).left, travel) << "in the middle of the strip";
    EXPECT_EQ(circular.nobbleArea(3).left, std::round((0.5 + 10.0 / 180.0) * travel));
    EXPECT_EQ(RangeGeometry(kUnit, range(0.0, 0.5, 0.5, 1.0), {0, 0}).nobbleArea(3).left, 0.0) << "no width";
}

TEST(RangeGeometry, TheLowerHandleWinsOnASharedEdgeAndSectionsAreBetweenThem)
{
    const double side = RangeGeometry::nobbleSize();
    const double travel = kSize.x - side;
    const RangeGeometry touching(kUnit, range(0.0, 0.5, 0.5 + side / travel, 1.0), kSize);
    const XY<double> shared{touching.nobbleArea(1).right, 25.0};
    ASSERT_EQ(touching.nobbleArea(2).left, shared.x);
    EXPECT_EQ(touching.nobbleAt(shared), 1);
    EXPECT_EQ(touching.nobbleAt({shared.x + 0.5, 25.0}), 2);
    EXPECT_EQ(touching.nobbleAt({shared.x, 15.0}), RangeGeometry::kNone);
    const RangeGeometry wide(kUnit, range(0.1, 0.3, 0.7, 0.9), kSize);
    const double centre = wide.nobbleX(1);
    EXPECT_EQ(wide.sectionAt({centre - 1.0, 15.0}), 0);
    EXPECT_EQ(wide.sectionAt({centre, 15.0}), 1);
    EXPECT_EQ(wide.sectionAt({wide.nobbleX(2) + 1.0, 15.0}), 2);
    const int margin = RangeGeometry::sectionMargin();
    const RangeGeometry low(kUnit, range(0.1, 0.3, 0.7, 0.9), {211, margin + 2});
    EXPECT_EQ(low.sectionAt({centre, 3.0}), RangeGeometry::kNone) << "both margins";
    EXPECT_EQ(low.sectionAt({centre, 1.0}), 1) << "one of them";
}

TEST(RangeAxis, APartMovesAsFarAsItsNeighboursAndTheAxisLetIt)
{
    const ColourData start = range(0.2, 0.3, 0.5, 0.6);
    expectNear(kUnit.moved(start, RangePart::handle(1), 0.1), range(0.2, 0.4, 0.5, 0.6));
    expectNear(kUnit.moved(start, RangePart::handle(1), 0.9), range(0.2, 0.5, 0.5, 0.6));
    expectNear(kUnit.moved(start, RangePart::handle(0), -0.9), range(0.0, 0.3, 0.5, 0.6));
    expectNear(kUnit.moved(start, RangePart::section(0), -0.9), range(0.0, 0.1, 0.5, 0.6));
    expectNear(kUnit.moved(start, RangePart::section(2), -0.9), range(0.2, 0.3, 0.3, 0.4));
    expectNear(kUnit.moved(start, RangePart::section(1), 0.9), range(0.6, 0.7, 0.9, 1.0));
    const ColourData outside = range(-0.5, 0.3, 0.5, 1.5);
    EXPECT_EQ(kUnit.moved(outside, RangePart::handle(3), 0.1), outside) << "no further out";
    expectNear(kUnit.moved(outside, RangePart::handle(3), -0.6), range(-0.5, 0.3, 0.5, 0.9));
}

TEST(RangeAxis, ACircularRangeMayLieAnywhereButIsNoLongerThanTheSpan)
{
    const ColourData start = range(350.0, 355.0, 365.0, 370.0);
    expectNear(kHue.moved(start, RangePart::section(1), 100.0), range(450.0, 455.0, 465.0, 470.0));
    expectNear(kHue.moved(start, RangePart::handle(3), 500.0), range(350.0, 355.0, 365.0, 530.0));
    expectNear(kHue.moved(start, RangePart::section(0), -500.0), range(190.0, 195.0, 365.0, 370.0));
    const ColourData full = range(10.0, 20.0, 180.0, 190.0);
    EXPECT_EQ(kHue.moved(full, RangePart::handle(0), -1.0), full);
    EXPECT_NE(kHue.moved(full, RangePart::section(1), -1.0), full) << "the whole still moves";
    EXPECT_EQ(kHue.inFirstTurn(range(-20.0, -10.0, 0.0, 10.0)), range(340.0, 350.0, 360.0, 370.0));
    EXPECT_EQ(kHue.shown(range(0.0, 0.0, 360.0, 360.0)), range(90.0, 90.0, 270.0, 270.0));
    EXPECT_EQ(kHue.nearest(10.0, 365.0), 370.0);
    EXPECT_FALSE(isUsableRange(range(0.0, std::numeric_limits<double>::quiet_NaN(), 1.0, 1.0)));
}

TEST(HueSatLum, TellsTheAxesOfAColour)
{
    for (double hue = 0.0; hue < 360.0; hue += 15.0)
        EXPECT_NEAR(HueSatLum::of(colourOfHSV(hue, 0.5, 0.8)).hue, hue, 1e-9);
    EXPECT_NEAR(HueSatLum::of(colourOfHSV(200.0, 0.5, 0.8)).saturation, 0.5, 1e-12);
    EXPECT_EQ(HueSatLum::of({0.0, 0.0, 0.0}).saturation, 0.0);
    EXPECT_EQ(HueSatLum::of({0.0, 1.0, 0.0}).luminance, 0.7152);
}

TEST(RangeHistogram, IsWhatTheStripShowsOfItsAxis)
{
    iFrameStatistics::Histogram histogram{};
    EXPECT_TRUE(RangeHistogram::heights(histogram, {0.0, 1.0}, 100).empty());
    histogram[0] = 100.0F;
    histogram[128] = 25.0F;
    // Half of a circle, with its start in the middle.
    const auto half = RangeHistogram::heights(histogram, {0.75, 1.25}, 128);
    EXPECT_GT(half[64], 0.9);
    EXPECT_EQ(half[63], 0.0);
    const auto whole = RangeHistogram::heights(histogram, {0.0, 1.0}, 256);
    EXPECT_NEAR(whole[128], whole[0] / 2.0, 1e-9) << "a quarter as many are half as high";
    EXPECT_EQ(whole[255], 0.0) << "no circle";
}

TEST(RangeHistogram, IsDarkBelowALightLineInItsPicture)
{
    const std::vector<Colour> columns(3, Colour{0.5, 0.5, 0.5});
    const std::vector<double> heights{0.0, 0.5, 1.0};
    const Image picture = RangeHistogram::picture(columns, heights, 40);
    ASSERT_EQ(picture.size(), (XY<int>{3, 40}));
    const auto at = [&picture](std::size_t x, std::size_t y) { return (*picture.pixels())[3 * y + x] & 0xff; };
    EXPECT_EQ(at(0, 20), 0x80U);
    EXPECT_EQ(at(1, 10), 0x80U);
    EXPECT_GT(at(1, 19), 0x80U);
    EXPECT_EQ(at(1, 20), 0x40U);
    EXPECT_EQ(at(2, 0), 0x40U);
    EXPECT_EQ(RangeHistogram::picture(columns, heights, 0).pixels(), nullptr);
}

TEST(ColEyeDrop, FindsSoftRangesThatHoldWhatWasPicked)
{
    std::vector<Colour> colours;
    for (int i = -10; i <= 10; ++i)
        colours.push_back(colourOfHSV(i < 0 ? 360.0 + i : i, 0.6, 0.8));
    colours.push_back({0.0, 0.0, 1.0}); // lies far off
    const auto picked = ColEyeDropBase::rangeOf(colours);
    EXPECT_LE(std::remainder(picked.hue[1] - 350.0, 360.0), 0.0);
    EXPECT_GE(std::remainder(picked.hue[2] - 10.0, 360.0), 0.0);
    EXPECT_LT(picked.hue[3] - picked.hue[0], 90.0);
    EXPECT_GT(picked.hue[1], picked.hue[0]) << "soft";
    EXPECT_LT(picked.saturation[1], 0.6);
    EXPECT_GT(picked.saturation[2], 0.6);
    const Colour grey{0.5, 0.5, 0.5};
    EXPECT_EQ(ColEyeDropBase::rangeOf({&grey, 1}).hue, range(0.0, 0.0, 360.0, 360.0));
    EXPECT_EQ(ColEyeDropBase::rangeOf({}).luminance, range(0.0, 0.0, 1.0, 1.0));
}

TEST(ColEyeDrop, AddsToWhatIsThereAndTakesAwayWhereItLosesLeast)
{
    using Mode = ColEyeDropBase::PickMode;
    const ColEyeDropBase::ColourRange present{range(340.0, 350.0, 370.0, 380.0), range(0.2, 0.3, 0.8, 0.9),
                                              range(0.0, 0.1, 0.9, 1.0)};
    const ColEyeDropBase::ColourRange picked{range(20.0, 25.0, 35.0, 40.0), range(0.4, 0.5, 0.6, 0.7),
                                             range(0.85, 0.9, 1.0, 1.0)};
    const auto added = ColEyeDropBase::combined(present, picked, Mode::Add);
    EXPECT_EQ(added.hue, range(340.0, 350.0, 395.0, 400.0)) << "across the start of the circle";
    EXPECT_EQ(added.saturation, present.saturation);
    EXPECT_EQ(ColEyeDropBase::combined(present, picked, Mode::Remove), present) << "its hue is not selected";
    ColEyeDropBase::ColourRange inside = picked;
    inside.hue = range(5.0, 10.0, 20.0, 30.0);
    const auto rest = ColEyeDropBase::combined(present, inside, Mode::Remove);
    EXPECT_EQ(rest.hue, present.hue);
    EXPECT_EQ(rest.saturation, present.saturation);
    EXPECT_EQ(rest.luminance, range(0.0, 0.1, 0.85, 0.9));
}

TEST(ColourOffset, APlaceOnTheWheelIsAnOffsetAtItsLevel)
{
    const ColourData offset = range(0.4, 0.1, 0.1, 0.7);
    EXPECT_NEAR(ColourOffset::pointOf(offset).x, 0.0, 1e-12);
    EXPECT_NEAR(ColourOffset::pointOf(offset).y, 0.2, 1e-12) << "red is up";
    expectNear(ColourOffset::withPoint(offset, ColourOffset::pointOf(offset)), offset);
    const ColourData green = ColourOffset::withPoint(offset, ColourOffset::directionOf(1) * 0.3);
    expectNear(green, range(0.05, 0.5, 0.05, 0.7));
    EXPECT_NEAR(ColourOffset::hueOf(ColourOffset::directionOf(1)), 120.0, 1e-9);
    expectNear(withLevel(offset, 0.5), range(0.7, 0.4, 0.4, 0.7));
}

} // namespace
} // namespace oribund
