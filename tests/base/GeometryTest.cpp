#include "oribund/host/base/Box.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/base/XY.h"

#include <gtest/gtest.h>

using namespace oribund;
using IntBox = Kt::Box<int>;

TEST(Box, HoldsItsLeftAndTopButNotItsRightAndBottom)
{
    const IntBox box = IntBox::fromSize({10, 20}, {30, 40});
    EXPECT_EQ(box, (IntBox{10, 20, 40, 60}));
    for (const XY<int> inside : {XY<int>{10, 20}, XY<int>{39, 59}})
        EXPECT_TRUE(box.contains(inside));
    for (const XY<int> outside : {XY<int>{40, 30}, XY<int>{20, 60}, XY<int>{9, 30}, XY<int>{20, 19}})
        EXPECT_FALSE(box.contains(outside));
    EXPECT_TRUE(box.contains(box));
    EXPECT_TRUE(box.contains(IntBox()));
    EXPECT_FALSE(box.contains(IntBox{10, 20, 41, 60}));
}

TEST(Box, IntersectsUnitesAndInsets)
{
    const IntBox a{0, 0, 10, 10};
    EXPECT_EQ(a.intersect({5, 6, 20, 20}), (IntBox{5, 6, 10, 10}));
    EXPECT_EQ(a.intersect({10, 0, 20, 10}), IntBox()) << "sharing an edge is not enough";
    EXPECT_FALSE(a.intersects({10, 0, 20, 10}));
    EXPECT_EQ(a.unite({20, -5, 30, 5}), (IntBox{0, -5, 30, 10}));
    EXPECT_EQ(a.unite({50, 50, 50, 60}), a);
    EXPECT_EQ(IntBox().unite(a), a);
    EXPECT_EQ(a.inset(2, 3), (IntBox{2, 3, 8, 7}));
    EXPECT_TRUE(a.inset(5).empty());
}

TEST(NumRange, HoldsWhatLiesBetweenItsEndsInEitherOrder)
{
    EXPECT_EQ(NumRange<double>(3.0, 1.0), NumRange<double>(1.0, 3.0));
    const NumRange<int> up(2, 5);
    const NumRange<int, Unordered> down(5, 2);
    EXPECT_EQ(down.length(), -3);
    EXPECT_NE(down, (NumRange<int, Unordered>(2, 5)));
    for (int v = 0; v < 8; ++v) {
        EXPECT_EQ(up.contains(v), v >= 2 && v <= 5) << v;
        EXPECT_EQ(down.contains(v), up.contains(v)) << v;
        EXPECT_EQ(up.clamp(v), v < 2 ? 2 : v > 5 ? 5 : v) << v;
        EXPECT_EQ(down.clamp(v), up.clamp(v)) << v;
    }
    EXPECT_TRUE(down.contains(NumRange<int, Unordered>(3, 2)));
    EXPECT_FALSE(up.contains(NumRange<int>(3, 6)));
    EXPECT_TRUE(up.overlaps(NumRange<int>(5, 9))) << "ranges are closed";
    EXPECT_FALSE(up.overlaps(NumRange<int>(6, 9)));
}
