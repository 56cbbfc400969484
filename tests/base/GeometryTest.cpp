#include "oribund/host/base/Box.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/base/XY.h"

#include <gtest/gtest.h>

using namespace oribund;
using IntBox = Kt::Box<int>;

TEST(Box, HoldsItsLeftAndTopButNotItsRightAndBottom)
{
    const IntBox box = IntBox::fromSize({10, 20}, {30, 40});
    EXPECT_EQ(box, (IntBox{10, 20, 40, 60}));
    EXPECT_TRUE(box.contains(XY<int>{10, 20}));
    EXPECT_TRUE(box.contains(XY<int>{39, 59}));
    EXPECT_FALSE(box.contains(XY<int>{40, 30}));
    EXPECT_FALSE(box.contains(XY<int>{20, 60}));
    EXPECT_FALSE(box.contains(XY<int>{9, 30}));
    EXPECT_TRUE(box.contains(box));
    EXPECT_TRUE(box.contains(IntBox()));
    EXPECT_FALSE(box.contains(IntBox{10, 20, 41, 60}));
}

TEST(Box, IntersectsUnitesAndInsets)
{
    const IntBox a{0, 0, 10, 10};
    EXPECT_EQ(a.intersect({5, 6, 20, 20}), (IntBox{5, 6, 10, 10}));
    EXPECT_EQ(a.intersect({10, 0, 20, 10}), IntBox()); // sharing an edge is not enough
    EXPECT_FALSE(a.intersects({10, 0, 20, 10}));
    EXPECT_EQ(a.unite({20, -5, 30, 5}), (IntBox{0, -5, 30, 10}));
    EXPECT_EQ(a.unite({50, 50, 50, 60}), a);
    EXPECT_EQ(IntBox().unite(a), a);
    EXPECT_EQ(a.inset(2, 3), (IntBox{2, 3, 8, 7}));
    EXPECT_EQ(a.inset(-1), (IntBox{-1, -1, 11, 11}));
    EXPECT_TRUE(a.inset(5).empty());
    EXPECT_EQ(a.movedBy({3, -4}), (IntBox{3, -4, 13, 6}));
    EXPECT_EQ(a.centre(), (XY<int>{5, 5}));
    EXPECT_EQ((Kt::Box<unsigned char>{250, 0, 255, 5}).size(), (XY<unsigned char>{5, 5}));
}

TEST(NumRange, OrderedSwapsItsEndsAndUnorderedKeepsThem)
{
    const NumRange<double> ordered(3.0, 1.0);
    EXPECT_EQ(ordered.start(), 1.0);
    EXPECT_EQ(ordered.length(), 2.0);
    const NumRange<double, Unordered> unordered(3.0, 1.0);
    EXPECT_EQ(unordered.start(), 3.0);
    EXPECT_EQ(unordered.length(), -2.0);
    EXPECT_EQ(unordered.low(), 1.0);
    EXPECT_EQ(unordered.high(), 3.0);
    EXPECT_NE(unordered, (NumRange<double, Unordered>(1.0, 3.0)));
}

TEST(NumRange, ContainsAndClampsInEitherDirection)
{
    const NumRange<int> up(2, 5);
    const NumRange<int, Unordered> down(5, 2);
    for (int v = 0; v < 8; ++v) {
        EXPECT_EQ(up.contains(v), v >= 2 && v <= 5) << v;
        EXPECT_EQ(down.contains(v), up.contains(v)) << v;
        EXPECT_EQ(down.clamp(v), up.clamp(v)) << v;
    }
    EXPECT_EQ(down.clamp(9), 5);
    EXPECT_EQ(down.clamp(-9), 2);
    EXPECT_TRUE(down.contains(NumRange<int, Unordered>(3, 2)));
    EXPECT_FALSE(up.contains(NumRange<int>(3, 6)));
    EXPECT_TRUE(up.overlaps(NumRange<int>(5, 9))); // ranges are closed
    EXPECT_FALSE(up.overlaps(NumRange<int>(6, 9)));
}

TEST(NumRange, TakesEffectTimes)
{
    const NumRange<FXTime, Unordered> region(FXTime{0.75}, FXTime{0.25});
    EXPECT_TRUE(region.contains(FXTime{0.5}));
    EXPECT_EQ(region.clamp(FXTime{0.9}), FXTime{0.75});
    EXPECT_EQ(region.length(), FXTime{-0.5});
}
