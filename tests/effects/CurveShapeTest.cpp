#include "tests/effects/CurveSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace oribund;
using namespace oribund::test;

namespace
{

/** Two keyframes, 0 to 1, with these handles. */
void ease(BezierCurve& curve, const TangentHandle& out, const TangentHandle& in)
{
    Keyframe first = smooth(0.0, 0.0);
    first.out = out;
    Keyframe last = smooth(1.0, 1.0);
    last.in = in;
    ASSERT_TRUE(fill(curve, {first, last}));
}

template <class Curve>
std::vector<double> sampled(const Curve& curve)
{
    std::vector<double> values;
    for (int i = -50; i <= 1050; ++i)
        values.push_back(curve.evaluate(i / 1000.0));
    return values;
}

double largestDifference(const std::vector<double>& a, const std::vector<double>& b)
{
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

} // namespace

TEST(CurveShape, AutomaticTangentsNeverOvershootAndMeetSmoothly)
{
    Random random(2);
    BezierCurve curve;
    std::vector<Keyframe> keys = random.keyframes(300);
    for (Keyframe& keyframe : keys)
        keyframe = smooth(keyframe.time, std::round(keyframe.value * 3.0));
    ASSERT_TRUE(fill(curve, keys));
    for (int i = 0; i + 1 < curve.size(); ++i) {
        const double from = keys[i].value;
        const double to = keys[i + 1].value;
        double before = from;
        for (int step = 1; step <= 40; ++step) {
            const double time = keys[i].time + (keys[i + 1].time - keys[i].time) * step / 40.0;
            const double value = curve.evaluate(time);
            ASSERT_GE((value - before) * (to >= from ? 1.0 : -1.0), -1e-13) << "segment " << i << " turns back";
            before = value;
        }
        if (i > 0) {
            const double in = curve.segment(i - 1).slope(keys[i].time);
            ASSERT_NEAR(curve.segment(i).slope(keys[i].time), in, 1e-9 * (1.0 + std::abs(in))) << "kink at " << i;
        }
    }
}

TEST(CurveShape, HandlesShapeTheCurveTheyAreDrawnAt)
{
    BezierCurve curve;
    // Handles on the straight line, however long, leave it straight.
    ease(curve, {0.05, 0.05, false}, {-0.6, -0.6, false});
    for (const double time : {0.01, 0.3, 0.5, 0.77, 0.999})
        EXPECT_NEAR(curve.evaluate(time), time, 1e-13);

    // Control points (0,0) (0.5,1) (0.5,0) (1,1): at parameter 1/4 time 0.296875, value 0.4375.
    ease(curve, {0.5, 1.0, false}, {-0.5, -1.0, false});
    EXPECT_NEAR(curve.evaluate(0.296875), 0.4375, 1e-14);
    EXPECT_EQ(curve.outHandle(0), (TangentHandle{0.5, 1.0, false}));

    // Handles past each other are shortened alike, and come back when there is room again.
    ease(curve, {0.6, 1.2, false}, {-0.6, 0.0, false});
    EXPECT_EQ(curve.outHandle(0), (TangentHandle{0.5, 1.0, false})) << "just too long";
    ease(curve, {1.5, 3.0, false}, {-1.5, 0.0, false});
    EXPECT_EQ(curve.outHandle(0), (TangentHandle{0.5, 1.0, false}));
    EXPECT_EQ(curve.inHandle(1), (TangentHandle{-0.5, 0.0, false}));
    ASSERT_EQ(curve.moveKeyframe(1, 4.0), 1);
    EXPECT_EQ(curve.outHandle(0), (TangentHandle{1.5, 3.0, false}));
}

TEST(CurveShape, SubdividingChangesNothingThatIsSeen)
{
    Random random(5);
    for (int round = 0; round < 100; ++round) {
        BezierCurve curve;
        const int count = 1 + random.index(6);
        ASSERT_TRUE(fill(curve, random.keyframes(count)));
        const auto before = sampled(curve);
        for (int cut = 0; cut < 4; ++cut) {
            const double time = random.real(-0.05, 1.05);
            const double value = curve.evaluate(time);
            const int index = curve.subdivide(time);
            ASSERT_GE(index, 0);
            EXPECT_EQ(curve.keyframe(index).time, time);
            EXPECT_EQ(curve.keyframe(index).value, value);
        }
        EXPECT_EQ(curve.size(), count + 4);
        ASSERT_LT(largestDifference(before, sampled(curve)), 1e-9) << "round " << round;
    }
}
